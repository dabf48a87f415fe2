// A small CLAP host: loads the built module, drives it by its C interface alone, and notes what it
// is asked for and told.

#pragma once

#include <clap/entry.h>
#include <clap/ext/audio-ports.h>
#include <clap/ext/gui.h>
#include <clap/ext/latency.h>
#include <clap/ext/note-ports.h>
#include <clap/ext/params.h>
#include <clap/ext/state.h>
#include <clap/ext/thread-check.h>
#include <clap/ext/timer-support.h>
#include <clap/plugin-factory.h>

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/formats/common/tempo_song.h"
#include "tests/formats/drivers/format_driver.h"

namespace tarquil {

inline constexpr char PLUGIN_ID[] = "org.tarquil.tarquil";

// An event in a host's memory.
struct HostEvent {
    alignas(8) unsigned char bytes[128] = {};

    [[nodiscard]] const clap_event_header& header() const {
        return *reinterpret_cast<const clap_event_header*>(bytes);
    }
    template <typename Event> [[nodiscard]] const Event& as() const {
        return *reinterpret_cast<const Event*>(bytes);
    }
};

// What a host says of the song that follows a tempo at that frame of it.
inline clap_event_transport transport_at(uint32_t frame, double rate) {
    const auto beats = [](double quarters) {
        return clap_beattime(std::llround(quarters * double(CLAP_BEATTIME_FACTOR)));
    };
    clap_event_transport transport{};
    transport.header = {.size = sizeof(transport),
                        .time = 0,
                        .space_id = CLAP_CORE_EVENT_SPACE_ID,
                        .type = CLAP_EVENT_TRANSPORT,
                        .flags = 0};
    transport.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE |
                      CLAP_TRANSPORT_HAS_TIME_SIGNATURE | CLAP_TRANSPORT_IS_PLAYING;
    transport.tempo = tempo_at(frame);
    transport.song_pos_beats = beats(position_at(frame, rate));
    transport.bar_start = beats(bar_start_at(frame, rate));
    transport.tsig_num = uint16_t(BEATS_PER_BAR);
    transport.tsig_denom = 4;
    return transport;
}

class ClapTestHost : public FormatDriver {
  public:
    // What a host has beside what this one has: null for none.
    using MoreExtensions = const void* (*)(const std::string& id);

    // `is_bare`: a host that has no extension.  It starts with `state`, a new instance's if empty.
    explicit ClapTestHost(bool is_bare = false, MoreExtensions more = nullptr,
                          const std::string& state = plain_state())
        : has_extensions(!is_bare), more_extensions(more) {
        host = {.clap_version = CLAP_VERSION,
                .host_data = this,
                .name = "test",
                .vendor = "",
                .url = "",
                .version = "1",
                .get_extension = [](const clap_host* asked, const char* id) -> const void* {
                    const ClapTestHost& self = of(asked);
                    const void* const found =
                        self.more_extensions == nullptr ? nullptr : self.more_extensions(id);
                    return found == nullptr && self.has_extensions ? find_extension(id) : found;
                },
                .request_restart = [](const clap_host*) {},
                .request_process = [](const clap_host*) {},
                .request_callback = [](const clap_host* asked) { of(asked).callback_requests++; }};
        output.reserve(MAX_OUTPUT);
        plugin = factory().create_plugin(&factory(), &host, PLUGIN_ID);
        if (plugin == nullptr || !plugin->init(plugin))
            throw std::runtime_error("the plug-in can not be made");
        if (!state.empty() && !load(state))
            throw std::runtime_error("the state is refused");
        // What follows from it is of no interest.
        flush();
        idle();
        output.clear();
        rescanned = 0;
        dirty_marks = 0;
        latency_changes = 0;
    }
    ~ClapTestHost() override {
        if (is_active)
            deactivate();
        plugin->destroy(plugin);
    }

    static const clap_plugin_entry& entry() {
        static const clap_plugin_entry* const found = [] {
            void* const module = dlopen(PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
            if (module == nullptr)
                throw std::runtime_error(dlerror());
            const auto* loaded = static_cast<const clap_plugin_entry*>(dlsym(module, "clap_entry"));
            loaded->init(PLUGIN_PATH);
            return loaded;
        }();
        return *found;
    }
    static const clap_plugin_factory& factory() {
        return *static_cast<const clap_plugin_factory*>(
            entry().get_factory(CLAP_PLUGIN_FACTORY_ID));
    }

    template <typename Extension> const Extension& get(const char* id) const {
        const void* const found = plugin->get_extension(plugin, id);
        if (found == nullptr)
            throw std::runtime_error(std::string("no extension ") + id);
        return *static_cast<const Extension*>(found);
    }
    const clap_plugin_params& params() const { return get<clap_plugin_params>(CLAP_EXT_PARAMS); }

    bool activate(double rate) override {
        const bool is_done = plugin->activate(plugin, rate, 1, 4096) && //
                             plugin->start_processing(plugin);
        is_active = is_active || is_done;
        return is_done;
    }
    bool activate() { return activate(44100); }
    void deactivate() override {
        plugin->stop_processing(plugin);
        plugin->deactivate(plugin);
        is_active = false;
    }

    // Events of the next block or flush, in the order of the calls; notes of even keys as CLAP's
    // own.
    void add(const SongMessage& message) override {
        const unsigned kind = message.bytes[0] & 0xF0U;
        if ((kind == 0x80 || kind == 0x90) && message.bytes[1] % 2 == 0)
            note(kind == 0x90 && message.bytes[2] > 0 ? CLAP_EVENT_NOTE_ON : CLAP_EVENT_NOTE_OFF,
                 message.bytes[1], message.bytes[0] & 0x0F, message.frame, -1,
                 message.bytes[2] / 127.0);
        else
            midi(message.bytes, message.frame);
    }
    void add_specials() override {
        for (unsigned i = 0; i < 20; i++)
            note(i % 2 == 0 ? CLAP_EVENT_NOTE_OFF : CLAP_EVENT_NOTE_CHOKE, -1, -1, i);
        for (clap_id channel = 0; channel < 16; channel++)
            set(0x1000 + channel, double(channel * 3), channel);
        set(0x1010, 9.0, 30);
        is_special = true;
    }
    void set(unsigned controller, int byte, uint32_t frame) override {
        set(controller, double(byte), frame);
    }
    void tell_tempo(uint32_t song_frame, double rate) override {
        transport = transport_at(song_frame, rate);
        has_transport = true;
    }
    void note(uint16_t type, int key, int channel = 0, uint32_t frame = 0, int32_t id = -1,
              double velocity = 1.0, int port = 0) {
        auto& event = add<clap_event_note>(type, frame);
        event.note_id = id;
        event.port_index = int16_t(port);
        event.channel = int16_t(channel);
        event.key = int16_t(key);
        event.velocity = velocity;
    }
    void midi(const std::array<uint8_t, 3>& message, uint32_t frame = 0) {
        auto& event = add<clap_event_midi>(CLAP_EVENT_MIDI, frame);
        std::copy(message.begin(), message.end(), event.data);
    }
    void set(clap_id id, double value, uint32_t frame = 0, void* cookie = nullptr) {
        auto& event = add<clap_event_param_value>(CLAP_EVENT_PARAM_VALUE, frame);
        event.param_id = id;
        event.cookie = cookie;
        event.note_id = -1;
        event.port_index = -1;
        event.channel = -1;
        event.key = -1;
        event.value = value;
    }
    void add_transport(const clap_event_transport& now, uint32_t frame) {
        auto& event = add<clap_event_transport>(CLAP_EVENT_TRANSPORT, frame);
        const clap_event_header header = event.header;
        event = now;
        event.header = header;
    }
    // The last one, to be changed.
    template <typename Event> Event& last() {
        return *reinterpret_cast<Event*>(input.back().bytes);
    }

    // They take the events; the thread counts as the audio thread meanwhile.  What the plug-in puts
    // out is added to `output`.
    clap_process_status process(float* left, float* right, uint32_t frames) {
        run(left, right, frames);
        return status;
    }
    StereoSound render(uint32_t frames) {
        StereoSound sound = run(frames);
        if (status != CLAP_PROCESS_CONTINUE)
            throw std::runtime_error("processing failed");
        return sound;
    }
    void flush() {
        params().flush(plugin, &in, &out);
        input.clear();
    }
    void prepare(float* left, float* right, uint32_t frames) override {
        sides[0] = left;
        sides[1] = right;
        block.transport = has_transport ? &transport : nullptr;
        block.frames_count = frames;
    }
    void call() noexcept override {
        const AudioThread thread;
        if (is_special)
            params().flush(plugin, &in, &out);
        status = plugin->process(plugin, &block);
        if (is_special)
            plugin->reset(plugin);
    }
    void finish() override {
        input.clear();
        is_special = false;
    }
    uint32_t latency_frames() override {
        return get<clap_plugin_latency>(CLAP_EXT_LATENCY).get(plugin);
    }

    // What the plug-in has asked the main thread for.
    void idle() {
        if (callback_requests.exchange(0) > 0)
            plugin->on_main_thread(plugin);
    }
    void look(unsigned round) override {
        idle();
        for (clap_id id = round % 5; id < 128; id += 5) {
            double now = 0;
            if (params().get_value(plugin, id, &now))
                text(id, now);
        }
    }
    [[nodiscard]] std::string complaint() const override {
        return wrong_threads == 0 ? "" : "the host is called on a wrong thread";
    }
    [[nodiscard]] bool tells_gestures() const override { return true; }
    std::vector<std::string> take_told() override {
        for (const HostEvent& event : output) {
            const uint16_t type = event.header().type;
            if (type == CLAP_EVENT_PARAM_VALUE)
                note_told({"", event.as<clap_event_param_value>().param_id,
                           event.as<clap_event_param_value>().value});
            else
                note_told({type == CLAP_EVENT_PARAM_GESTURE_BEGIN ? "begin" : "end",
                           event.as<clap_event_param_gesture>().param_id});
        }
        output.clear();
        return take_noted([](const Told& one) { return int(one.value); });
    }

    double value(clap_id id) {
        double value = -1;
        if (!params().get_value(plugin, id, &value))
            throw std::runtime_error("no parameter " + std::to_string(id));
        return value;
    }
    std::string text(clap_id id, double value) {
        char text[256] = "";
        return params().value_to_text(plugin, id, value, text, sizeof(text)) ? text : "(none)";
    }
    using FormatDriver::load;
    using FormatDriver::save;
    std::string save(size_t piece) override {
        Stream stream{"", piece};
        const clap_ostream to = {
            .ctx = &stream,
            .write = [](const clap_ostream* asked, const void* bytes, uint64_t size) {
                auto& target = *static_cast<Stream*>(asked->ctx);
                const size_t count = std::min(size_t(size), target.piece);
                target.bytes.append(static_cast<const char*>(bytes), count);
                return int64_t(count);
            }};
        return get<clap_plugin_state>(CLAP_EXT_STATE).save(plugin, &to) ? stream.bytes : "(failed)";
    }
    bool load(const std::string& state, size_t piece) override {
        Stream stream{state, piece};
        const clap_istream from = {
            .ctx = &stream, .read = [](const clap_istream* asked, void* bytes, uint64_t size) {
                auto& source = *static_cast<Stream*>(asked->ctx);
                const size_t count =
                    std::min({size_t(size), source.piece, source.bytes.size() - source.done});
                std::copy_n(source.bytes.data() + source.done, count, static_cast<char*>(bytes));
                source.done += count;
                return int64_t(count);
            }};
        return get<clap_plugin_state>(CLAP_EXT_STATE).load(plugin, &from);
    }

    [[nodiscard]] bool is_on_main_thread() const {
        return std::this_thread::get_id() == main_thread;
    }

    const clap_plugin* plugin = nullptr;
    std::deque<HostEvent> input;
    std::vector<HostEvent> output; // the first of them, in fixed memory
    bool takes_output = true;
    // What blocks begin with.
    clap_event_transport transport{};
    bool has_transport = false;

    // What the plug-in has asked for.
    std::atomic<int> flush_requests{0};
    std::atomic<int> callback_requests{0};
    int dirty_marks = 0;
    int latency_changes = 0;
    clap_param_rescan_flags rescanned = 0;
    std::atomic<int> wrong_threads{0};

  private:
    // What it says of its threads, and what it notes of the plug-in's calls.
    static inline thread_local bool is_audio_thread = false;
    struct AudioThread {
        AudioThread() { is_audio_thread = true; }
        ~AudioThread() { is_audio_thread = false; }
    };
    static ClapTestHost& of(const clap_host* asked) {
        return *static_cast<ClapTestHost*>(asked->host_data);
    }
    static bool is_main(const clap_host* asked) {
        return !is_audio_thread && of(asked).is_on_main_thread();
    }
    static void expect_main(const clap_host* asked) {
        if (!is_main(asked))
            of(asked).wrong_threads++;
    }
    static bool take_output(const clap_output_events* list, const clap_event_header* event) {
        auto& target = *static_cast<ClapTestHost*>(list->ctx);
        if (target.takes_output && target.output.size() < MAX_OUTPUT)
            std::copy_n(reinterpret_cast<const unsigned char*>(event), event->size,
                        target.output.emplace_back().bytes);
        return target.takes_output;
    }
    static const void* find_extension(const std::string& id) {
        static constexpr clap_host_params PARAMS = {
            .rescan =
                [](const clap_host* asked, clap_param_rescan_flags flags) {
                    expect_main(asked);
                    of(asked).rescanned |= flags;
                },
            .clear = [](const clap_host* asked, clap_id,
                        clap_param_clear_flags) { expect_main(asked); },
            .request_flush =
                [](const clap_host* asked) {
                    if (is_audio_thread)
                        of(asked).wrong_threads++;
                    of(asked).flush_requests++;
                }};
        static constexpr clap_host_state STATE = {.mark_dirty = [](const clap_host* asked) {
            expect_main(asked);
            of(asked).dirty_marks++;
        }};
        static constexpr clap_host_latency LATENCY = {.changed = [](const clap_host* asked) {
            expect_main(asked);
            of(asked).latency_changes++;
        }};
        static constexpr clap_host_thread_check THREAD_CHECK = {
            .is_main_thread = is_main,
            .is_audio_thread = [](const clap_host*) { return is_audio_thread; }};
        if (id == CLAP_EXT_PARAMS)
            return &PARAMS;
        if (id == CLAP_EXT_STATE)
            return &STATE;
        if (id == CLAP_EXT_LATENCY)
            return &LATENCY;
        return id == CLAP_EXT_THREAD_CHECK ? &THREAD_CHECK : nullptr;
    }

    struct Stream {
        std::string bytes;
        size_t piece = 0;
        size_t done = 0;
    };

    template <typename Event> Event& add(uint16_t type, uint32_t frame) {
        static_assert(sizeof(Event) <= sizeof(HostEvent));
        auto* event = new (input.emplace_back().bytes) Event{};
        event->header = {.size = sizeof(Event),
                         .time = frame,
                         .space_id = CLAP_CORE_EVENT_SPACE_ID,
                         .type = type,
                         .flags = 0};
        return *event;
    }

    static constexpr size_t MAX_OUTPUT = 1U << 16U;

    const clap_input_events in = {
        .ctx = this,
        .size =
            [](const clap_input_events* list) {
                return uint32_t(static_cast<ClapTestHost*>(list->ctx)->input.size());
            },
        .get =
            [](const clap_input_events* list, uint32_t index) {
                return &static_cast<ClapTestHost*>(list->ctx)->input[index].header();
            }};
    const clap_output_events out = {.ctx = this, .try_push = take_output};
    float* sides[2] = {};
    clap_audio_buffer buffer{
        .data32 = sides, .data64 = nullptr, .channel_count = 2, .latency = 0, .constant_mask = 3};
    clap_process block{.steady_time = -1,
                       .frames_count = 0,
                       .transport = nullptr,
                       .audio_inputs = nullptr,
                       .audio_outputs = &buffer,
                       .audio_inputs_count = 0,
                       .audio_outputs_count = 1,
                       .in_events = &in,
                       .out_events = &out};
    clap_process_status status = CLAP_PROCESS_ERROR;
    bool is_active = false;
    bool is_special = false;
    const bool has_extensions;
    const MoreExtensions more_extensions;
    clap_host host;
    const std::thread::id main_thread = std::this_thread::get_id();
};

} // namespace tarquil
