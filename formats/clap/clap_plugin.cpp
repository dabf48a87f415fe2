// The plug-in as CLAP hosts see it: a hosted player, and a host's operations on it.

#include "formats/clap/clap_plugin.h"

#include <clap/ext/params.h>

#include <string>

#include "formats/clap/clap_interface.h"
#include "formats/clap/clap_presets.h"
#include "midi/gm/gm_channel.h"

namespace tarquil {

namespace {

// Calls use(header) for each event of a list that has one.
template <typename Use> void for_each_event(const clap_input_events* in, const Use& use) {
    const uint32_t count = in == nullptr ? 0 : in->size(in);
    for (uint32_t i = 0; i < count; i++) {
        if (const clap_event_header* event = in->get(in, i))
            use(*event);
    }
}

const clap_event_transport* find_transport(const clap_event_header& event) {
    const bool is_one = event.space_id == CLAP_CORE_EVENT_SPACE_ID &&
                        event.type == CLAP_EVENT_TRANSPORT &&
                        event.size >= sizeof(clap_event_transport);
    return is_one ? reinterpret_cast<const clap_event_transport*>(&event) : nullptr;
}

HostTempo read_transport(const clap_event_transport& transport) {
    const auto has = [&](uint32_t flag) { return (transport.flags & flag) != 0; };
    const auto beats = [](clap_beattime time) {
        return double(time) / double(CLAP_BEATTIME_FACTOR);
    };
    HostTempo said;
    if (has(CLAP_TRANSPORT_HAS_TEMPO))
        said.quarters_per_minute = transport.tempo;
    if (has(CLAP_TRANSPORT_IS_PLAYING) && has(CLAP_TRANSPORT_HAS_BEATS_TIMELINE)) {
        said.place = HostTempo::Place{};
        said.place->position = beats(transport.song_pos_beats);
        said.place->bar_start = beats(transport.bar_start);
        if (has(CLAP_TRANSPORT_HAS_TIME_SIGNATURE))
            said.place->bar_length = quarters(transport.tsig_num, transport.tsig_denom);
    }
    return said;
}

// The two sides of the first port; false when a host gives none.
bool find_output(const clap_process& process, float*& left, float*& right) {
    if (process.audio_outputs_count == 0 || process.audio_outputs == nullptr)
        return false;
    clap_audio_buffer& buffer = process.audio_outputs[0];
    if (buffer.channel_count < 2 || buffer.data32 == nullptr)
        return false;
    left = buffer.data32[0];
    right = buffer.data32[1];
    buffer.constant_mask = 0;
    return left != nullptr && right != nullptr;
}

} // namespace

ClapPlugin::ClapPlugin(const clap_host& host)
    : interface(make_clap_interface(*this)), calling(host), input(hosted),
      told_programs(hosted.player().all_channel_programs()) {
    host_controls(); // made here, not on the audio thread
}

ClapWindow* ClapPlugin::window() {
    if (shown == nullptr)
        shown = make_clap_window(*this);
    return shown.get();
}

bool ClapPlugin::activate(double rate) {
    if (calling.has_threads() && job_runner.width() > 1)
        hosted.player().set_runner(job_runner);
    if (is_active || !hosted.activate(rate))
        return false;
    host_rate = rate;
    input.reset();
    if (told_latency != hosted.latency_frames()) {
        told_latency = hosted.latency_frames();
        calling.latency_changed();
    }
    is_active = true;
    return true;
}

void ClapPlugin::deactivate() {
    reset(); // a note that is held now would sound for ever after the next activation
    is_active = false;
}

void ClapPlugin::reset() {
    if (!is_active)
        return;
    hosted.reset();
    input.reset();
}

clap_process_status ClapPlugin::process(const clap_process& process) {
    float* left = nullptr;
    float* right = nullptr;
    const bool has_output = find_output(process, left, right);
    if (!is_active || (!has_output && process.frames_count > 0))
        return CLAP_PROCESS_ERROR;
    hosted.begin_block(left, right, process.frames_count);
    if (process.transport != nullptr)
        hosted.set_tempo(read_transport(*process.transport), 0);
    play(process.in_events);
    hosted.end_block();
    tell(process.out_events, process.frames_count);
    return CLAP_PROCESS_CONTINUE;
}

void ClapPlugin::flush(const clap_input_events* in, const clap_output_events* out) {
    if (is_active) {
        hosted.begin_block(nullptr, nullptr, 0);
        play(in);
        hosted.end_block();
    } else {
        for_each_event(in, [&](const clap_event_header& event) {
            const auto change = read_control_change(event);
            if (!change)
                return;
            Player& player = hosted.player();
            make_stale(stale_after(*change, get_control(player, *change->control)));
            set_control(player, *change->control, change->value);
        });
        told_programs = hosted.player().all_channel_programs();
    }
    tell(out, 0);
}

void ClapPlugin::play(const clap_input_events* in) {
    for_each_event(in, [&](const clap_event_header& event) {
        if (const auto change = read_control_change(event))
            play_change(*change, event.time);
        else if (const auto* const transport = find_transport(event))
            hosted.set_tempo(read_transport(*transport), event.time);
        else
            input.play(event);
    });
}

void ClapPlugin::play_change(const ControlChange& change, uint32_t frame) {
    make_stale(stale_after(change, get_control(hosted, *change.control)));
    set_control(hosted, *change.control, change.value, frame);
    if (change.control->kind == HostControl::Kind::CHANNEL_PROGRAM)
        told_programs[change.control->number] = uint8_t(change.value);
}

void ClapPlugin::tell(const clap_output_events* out, uint32_t frames) {
    if (out == nullptr)
        return;
    edits.send(*out);
    tell_programs(*out);
    if (is_active)
        tell_moves(*out, frames);
}

// What learned controllers have moved, unless a window says so.
void ClapPlugin::tell_moves(const clap_output_events& out, uint32_t frames) {
    struct Told {
        ClapPlugin& plugin;
        const clap_output_events& out;

        [[nodiscard]] bool begin_edit(unsigned number) const {
            return send_gesture(out, CLAP_EVENT_PARAM_GESTURE_BEGIN, number);
        }
        [[nodiscard]] bool edited(unsigned number) const {
            const int value = plugin.hosted.get_controller(number);
            if (!send_value(out, number, value, CLAP_EVENT_IS_LIVE))
                return false;
            // The type of an effect decides what its parameters are.
            if (find_host_control(number)->is_list)
                plugin.make_stale(CLAP_PARAM_RESCAN_TEXT);
            return true;
        }
        [[nodiscard]] bool end_edit(unsigned number) const {
            return send_gesture(out, CLAP_EVENT_PARAM_GESTURE_END, number);
        }
    };
    Player& player = hosted.player();
    if (!player.meters().watched.load(std::memory_order_relaxed))
        moves.take(player.moved_controls());
    moves.tell(frames / host_rate, Told{*this, out});
}

// Program changes by MIDI, which the host records as such.
void ClapPlugin::tell_programs(const clap_output_events& out) {
    for (unsigned channel = 0; channel < told_programs.size(); channel++) {
        const auto program = uint8_t(hosted.player().channel_program(channel));
        if (told_programs[channel] != program &&
            send_value(out, CHANNEL_PROGRAM_ID + channel, program, CLAP_EVENT_DONT_RECORD)) {
            told_programs[channel] = program;
            make_stale(channel == RHYTHM_CHANNEL ? STALE_NOTE_NAMES : 0U);
        }
    }
}

void ClapPlugin::make_stale(StaleFlags flags) {
    // Once for all until the host answers.
    if (flags != 0 && stale.fetch_or(flags) == 0)
        calling.request_callback();
}

void ClapPlugin::on_main_thread() {
    const StaleFlags flags = stale.exchange(0);
    if ((flags & ~STALE_NOTE_NAMES) != 0)
        calling.rescan(flags & ~STALE_NOTE_NAMES);
    if ((flags & STALE_NOTE_NAMES) != 0)
        calling.note_names_changed();
}

void ClapPlugin::everything_changed() {
    calling.rescan(CLAP_PARAM_RESCAN_VALUES | CLAP_PARAM_RESCAN_TEXT);
    calling.note_names_changed();
}

uint32_t ClapPlugin::count_note_names() {
    key_names = hosted.player().drum_names();
    return uint32_t(key_names.size());
}

bool ClapPlugin::save(const clap_ostream& stream) {
    const std::string state = hosted.save_state();
    for (size_t done = 0; done < state.size();) {
        const int64_t written = stream.write(&stream, state.data() + done, state.size() - done);
        if (written <= 0 || uint64_t(written) > state.size() - done)
            return false;
        done += size_t(written);
    }
    return true;
}

bool ClapPlugin::load(const clap_istream& stream) {
    // A bank as plain text is a megabyte; nothing sensible is as long as this.
    constexpr size_t MAX_STATE = size_t(64) << 20U;
    std::string state;
    char piece[1U << 14U];
    for (;;) {
        const int64_t count = stream.read(&stream, piece, sizeof(piece));
        if (count < 0 || uint64_t(count) > sizeof(piece) || state.size() > MAX_STATE)
            return false;
        if (count == 0)
            break;
        state.append(piece, size_t(count));
    }
    if (hosted.load_state(state) != 0)
        return false;
    everything_changed();
    return true;
}

bool ClapPlugin::load_preset(uint32_t kind, const char* location, const char* load_key) {
    const char* const reason = take_preset(kind, location, load_key);
    if (reason != nullptr) {
        calling.preset_failed({kind, location, load_key}, reason);
        return false;
    }
    everything_changed();
    calling.mark_dirty();
    calling.preset_loaded({kind, location, load_key});
    return true;
}

// Null, or why it can not be.
const char* ClapPlugin::take_preset(uint32_t kind, const char* location, const char* load_key) {
    if (kind == CLAP_PRESET_IN_FILE)
        return location != nullptr && hosted.load_file(location) == 0
                   ? nullptr
                   : "not a bank or an instrument that can be read";
    const Instrument* const sound =
        kind == CLAP_PRESET_IN_PLUGIN && load_key != nullptr ? find_clap_preset(load_key) : nullptr;
    if (sound == nullptr)
        return "there is no such sound";
    Player& player = hosted.player();
    const unsigned program = player.channel_program(0);
    player.load_instrument(program, *sound);
    player.set_edited_program(program);
    return nullptr;
}

} // namespace tarquil
