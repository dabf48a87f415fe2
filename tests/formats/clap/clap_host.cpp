// A small CLAP host.

#include "tests/formats/clap/clap_host.h"

#include <dlfcn.h>

#include <algorithm>
#include <new>
#include <stdexcept>

#include "tests/formats/common/tempo_song.h"

namespace tarquil {

namespace {

thread_local bool is_audio_thread = false;

struct AudioThread {
    AudioThread() { is_audio_thread = true; }
    ~AudioThread() { is_audio_thread = false; }
};

ClapTestHost& of(const clap_host* host) {
    return *static_cast<ClapTestHost*>(host->host_data);
}

bool is_main(const clap_host* host) {
    return !is_audio_thread && of(host).is_on_main_thread();
}

void expect_main(const clap_host* host) {
    if (!is_main(host))
        of(host).wrong_threads++;
}

const clap_host_params PARAMS = {
    .rescan =
        [](const clap_host* host, clap_param_rescan_flags flags) {
            expect_main(host);
            of(host).rescanned |= flags;
        },
    .clear = [](const clap_host* host, clap_id, clap_param_clear_flags) { expect_main(host); },
    .request_flush =
        [](const clap_host* host) {
            if (is_audio_thread)
                of(host).wrong_threads++;
            of(host).flush_requests++;
        }};

const clap_host_state STATE = {.mark_dirty = [](const clap_host* host) {
    expect_main(host);
    of(host).dirty_marks++;
}};

const clap_host_latency LATENCY = {.changed = [](const clap_host* host) {
    expect_main(host);
    of(host).latency_changes++;
}};

const clap_host_thread_check THREAD_CHECK = {
    .is_main_thread = is_main, .is_audio_thread = [](const clap_host*) { return is_audio_thread; }};

const void* find_extension(const std::string& id) {
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

} // namespace

const clap_plugin_entry& ClapTestHost::entry() {
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

const clap_plugin_factory& ClapTestHost::factory() {
    return *static_cast<const clap_plugin_factory*>(entry().get_factory(CLAP_PLUGIN_FACTORY_ID));
}

ClapTestHost::ClapTestHost(bool is_bare, MoreExtensions more, const std::string& state)
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

ClapTestHost::~ClapTestHost() {
    plugin->destroy(plugin);
}

bool ClapTestHost::activate(double rate, uint32_t max_frames) {
    return plugin->activate(plugin, rate, 1, max_frames) && plugin->start_processing(plugin);
}

void ClapTestHost::deactivate() {
    plugin->stop_processing(plugin);
    plugin->deactivate(plugin);
}

template <typename Event> Event& ClapTestHost::add(uint16_t type, uint32_t frame) {
    static_assert(sizeof(Event) <= sizeof(HostEvent));
    auto* event = new (input.emplace_back().bytes) Event{};
    event->header = {.size = sizeof(Event),
                     .time = frame,
                     .space_id = CLAP_CORE_EVENT_SPACE_ID,
                     .type = type,
                     .flags = 0};
    return *event;
}

void ClapTestHost::note(uint16_t type, int key, int channel, uint32_t frame, int32_t id,
                        double velocity, int port) {
    auto& event = add<clap_event_note>(type, frame);
    event.note_id = id;
    event.port_index = int16_t(port);
    event.channel = int16_t(channel);
    event.key = int16_t(key);
    event.velocity = velocity;
}

void ClapTestHost::midi(const std::array<uint8_t, 3>& message, uint32_t frame) {
    auto& event = add<clap_event_midi>(CLAP_EVENT_MIDI, frame);
    std::copy(message.begin(), message.end(), event.data);
}

void ClapTestHost::set(clap_id id, double value, uint32_t frame, void* cookie) {
    auto& event = add<clap_event_param_value>(CLAP_EVENT_PARAM_VALUE, frame);
    event.param_id = id;
    event.cookie = cookie;
    event.note_id = -1;
    event.port_index = -1;
    event.channel = -1;
    event.key = -1;
    event.value = value;
}

void ClapTestHost::add_transport(const clap_event_transport& now, uint32_t frame) {
    auto& event = add<clap_event_transport>(CLAP_EVENT_TRANSPORT, frame);
    const clap_event_header header = event.header;
    event = now;
    event.header = header;
}

clap_input_events ClapTestHost::events_in() {
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

clap_output_events ClapTestHost::events_out() {
    return {.ctx = this,
            .try_push = [](const clap_output_events* list, const clap_event_header* event) {
                auto& target = *static_cast<ClapTestHost*>(list->ctx);
                if (!target.takes_output)
                    return false;
                HostEvent copy;
                std::copy_n(reinterpret_cast<const unsigned char*>(event), event->size, copy.bytes);
                target.output.push_back(copy);
                return true;
            }};
}

clap_process ClapTestHost::make_block(clap_audio_buffer& audio, float** sides, uint32_t frames,
                                      const clap_input_events& in,
                                      const clap_output_events& out) const {
    audio = {
        .data32 = sides, .data64 = nullptr, .channel_count = 2, .latency = 0, .constant_mask = 3};
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

clap_process_status ClapTestHost::process(float* left, float* right, uint32_t frames) {
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

void ClapTestHost::process_only(const clap_process& block) noexcept {
    const AudioThread thread;
    plugin->process(plugin, &block);
}

void ClapTestHost::flush_only(const clap_input_events& in, const clap_output_events& out) noexcept {
    const AudioThread thread;
    params().flush(plugin, &in, &out);
}

void ClapTestHost::reset_only() noexcept {
    const AudioThread thread;
    plugin->reset(plugin);
}

StereoSound ClapTestHost::render(uint32_t frames) {
    StereoSound sound{std::vector<float>(frames), std::vector<float>(frames)};
    if (process(sound.left.data(), sound.right.data(), frames) != CLAP_PROCESS_CONTINUE)
        throw std::runtime_error("processing failed");
    return sound;
}

void ClapTestHost::flush() {
    const clap_input_events in = events_in();
    const clap_output_events out = events_out();
    params().flush(plugin, &in, &out);
    input.clear();
}

void ClapTestHost::idle() {
    if (callback_requests.exchange(0) > 0)
        plugin->on_main_thread(plugin);
}

double ClapTestHost::value(clap_id id) {
    double value = -1;
    if (!params().get_value(plugin, id, &value))
        throw std::runtime_error("no parameter " + std::to_string(id));
    return value;
}

std::string ClapTestHost::text(clap_id id, double value) {
    char text[256] = "";
    return params().value_to_text(plugin, id, value, text, sizeof(text)) ? text : "(none)";
}

std::string ClapTestHost::save(size_t piece) {
    Stream stream{"", piece};
    const clap_ostream out = {
        .ctx = &stream, .write = [](const clap_ostream* asked, const void* bytes, uint64_t size) {
            auto& target = *static_cast<Stream*>(asked->ctx);
            const size_t count = std::min(size_t(size), target.piece);
            target.bytes.append(static_cast<const char*>(bytes), count);
            return int64_t(count);
        }};
    return get<clap_plugin_state>(CLAP_EXT_STATE).save(plugin, &out) ? stream.bytes : "(failed)";
}

bool ClapTestHost::load(const std::string& state, size_t piece) {
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

clap_event_transport transport_at(uint32_t frame, double rate) {
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
