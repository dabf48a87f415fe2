// A small CLAP host: loads the built module, drives it by its C interface alone, and notes what it
// is asked for.

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

class ClapTestHost {
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
                .request_process = [](const clap_host* asked) { of(asked).process_requests++; },
                .request_callback = [](const clap_host* asked) { of(asked).callback_requests++; }};
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
    ClapTestHost(const ClapTestHost&) = delete;
    ClapTestHost& operator=(const ClapTestHost&) = delete;
    ~ClapTestHost() { plugin->destroy(plugin); }

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

    bool activate(double rate = 44100, uint32_t max_frames = 4096) {
        return plugin->activate(plugin, rate, 1, max_frames) && plugin->start_processing(plugin);
    }
    void deactivate() {
        plugin->stop_processing(plugin);
        plugin->deactivate(plugin);
    }

    // Events of the next block or flush, in the order of the calls.
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
        const AudioThread thread;
        float* sides[] = {left, right};
        const clap_input_events in = events_in();
        const clap_output_events out = events_out();
        clap_audio_buffer buffer;
        const clap_process block = make_block(buffer, sides, frames, in, out);
        const clap_process_status status = plugin->process(plugin, &block);
        input.clear();
        return status;
    }
    StereoSound render(uint32_t frames) {
        StereoSound sound{std::vector<float>(frames), std::vector<float>(frames)};
        if (process(sound.left.data(), sound.right.data(), frames) != CLAP_PROCESS_CONTINUE)
            throw std::runtime_error("processing failed");
        return sound;
    }
    void flush() {
        const clap_input_events in = events_in();
        const clap_output_events out = events_out();
        params().flush(plugin, &in, &out);
        input.clear();
    }
    // A block of this host's events with an output.
    clap_process make_block(clap_audio_buffer& audio, float** sides, uint32_t frames,
                            const clap_input_events& in, const clap_output_events& out) const {
        audio = {.data32 = sides,
                 .data64 = nullptr,
                 .channel_count = 2,
                 .latency = 0,
                 .constant_mask = 3};
        return {.steady_time = -1,
                .frames_count = frames,
                .transport = has_transport ? &transport : nullptr,
                .audio_inputs = nullptr,
                .audio_outputs = &audio,
                .audio_inputs_count = 0,
                .audio_outputs_count = 1,
                .in_events = &in,
                .out_events = &out};
    }
    // The plug-in's own calls, for watches.
    void process_only(const clap_process& block) noexcept {
        const AudioThread thread;
        plugin->process(plugin, &block);
    }
    void flush_only(const clap_input_events& in, const clap_output_events& out) noexcept {
        const AudioThread thread;
        params().flush(plugin, &in, &out);
    }
    void reset_only() noexcept {
        const AudioThread thread;
        plugin->reset(plugin);
    }
    clap_input_events events_in() {
        return {.ctx = this,
                .size =
                    [](const clap_input_events* list) {
                        return uint32_t(static_cast<ClapTestHost*>(list->ctx)->input.size());
                    },
                .get =
                    [](const clap_input_events* list, uint32_t index) {
                        return &static_cast<ClapTestHost*>(list->ctx)->input[index].header();
                    }};
    }
    clap_output_events events_out() {
        return {.ctx = this,
                .try_push = [](const clap_output_events* list, const clap_event_header* event) {
                    auto& target = *static_cast<ClapTestHost*>(list->ctx);
                    if (!target.takes_output)
                        return false;
                    HostEvent copy;
                    std::copy_n(reinterpret_cast<const unsigned char*>(event), event->size,
                                copy.bytes);
                    target.output.push_back(copy);
                    return true;
                }};
    }

    // What the plug-in has asked the main thread for.
    void idle() {
        if (callback_requests.exchange(0) > 0)
            plugin->on_main_thread(plugin);
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
    // The stream takes or gives `piece` bytes at a time.
    std::string save(size_t piece = 4096) {
        Stream stream{"", piece};
        const clap_ostream out = {
            .ctx = &stream,
            .write = [](const clap_ostream* asked, const void* bytes, uint64_t size) {
                auto& target = *static_cast<Stream*>(asked->ctx);
                const size_t count = std::min(size_t(size), target.piece);
                target.bytes.append(static_cast<const char*>(bytes), count);
                return int64_t(count);
            }};
        return get<clap_plugin_state>(CLAP_EXT_STATE).save(plugin, &out) ? stream.bytes
                                                                         : "(failed)";
    }
    bool load(const std::string& state, size_t piece = 4096) {
        Stream stream{state, piece};
        const clap_istream in = {
            .ctx = &stream, .read = [](const clap_istream* asked, void* bytes, uint64_t size) {
                auto& source = *static_cast<Stream*>(asked->ctx);
                const size_t count =
                    std::min({size_t(size), source.piece, source.bytes.size() - source.done});
                std::copy_n(source.bytes.data() + source.done, count, static_cast<char*>(bytes));
                source.done += count;
                return int64_t(count);
            }};
        return get<clap_plugin_state>(CLAP_EXT_STATE).load(plugin, &in);
    }

    [[nodiscard]] bool is_on_main_thread() const {
        return std::this_thread::get_id() == main_thread;
    }

    const clap_plugin* plugin = nullptr;
    std::deque<HostEvent> input;
    std::vector<HostEvent> output;
    bool takes_output = true;
    // What blocks begin with.
    clap_event_transport transport{};
    bool has_transport = false;

    // What the plug-in has asked for.
    std::atomic<int> flush_requests{0};
    std::atomic<int> process_requests{0};
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

    const bool has_extensions;
    const MoreExtensions more_extensions;
    clap_host host;
    const std::thread::id main_thread = std::this_thread::get_id();
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

} // namespace tarquil
