// A host's events as a player's.

#include "formats/clap/clap_input.h"

#include <clap/ext/params.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "midi/gm/gm_channel.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

namespace {

// The event as the kind that its type says, if it is as long as one.
template <typename Event> const Event* as(const clap_event_header& event) {
    return event.size >= sizeof(Event) ? reinterpret_cast<const Event*>(&event) : nullptr;
}

// A host may hand back what it was given with the parameter.
const HostControl* find_control(const clap_event_param_value& event) {
    const std::span<const HostControl> all = host_controls();
    const auto* cookie = static_cast<const HostControl*>(event.cookie);
    const std::less<const HostControl*> is_before;
    const bool is_ours = cookie != nullptr && !is_before(cookie, all.data()) &&
                         is_before(cookie, all.data() + all.size());
    return is_ours && cookie->id == event.param_id ? cookie : find_host_control(event.param_id);
}

bool is_our_port(int32_t port) {
    return port == 0 || port == NoteTable::ANY;
}

bool is_in(int32_t value, int32_t count) {
    return value >= 0 && value < count;
}

// A velocity of 0 is still a note.
unsigned velocity_byte(double velocity) {
    if (std::isnan(velocity))
        return 1;
    return unsigned(std::lround(std::clamp(velocity * 127, 1.0, 127.0)));
}

} // namespace

std::optional<ControlChange> read_control_change(const clap_event_header& event) {
    if (event.space_id != CLAP_CORE_EVENT_SPACE_ID || event.type != CLAP_EVENT_PARAM_VALUE)
        return std::nullopt;
    const auto* said = as<clap_event_param_value>(event);
    const HostControl* control = said == nullptr ? nullptr : find_control(*said);
    if (control == nullptr)
        return std::nullopt;
    const std::optional<int> value = control_value(*control, said->value);
    if (!value)
        return std::nullopt;
    return ControlChange{control, *value};
}

StaleFlags stale_after(const ControlChange& change, int before) {
    if (change.value == before)
        return 0;
    if (change.control->kind == HostControl::Kind::EDITED_PROGRAM)
        return CLAP_PARAM_RESCAN_VALUES | CLAP_PARAM_RESCAN_TEXT;
    if (change.control->id == CHANNEL_PROGRAM_ID + RHYTHM_CHANNEL)
        return STALE_NOTE_NAMES;
    // The type of an effect decides what its parameters are.
    const bool is_type =
        change.control->kind == HostControl::Kind::CONTROLLER && change.control->is_list;
    return is_type ? StaleFlags(CLAP_PARAM_RESCAN_TEXT) : 0U;
}

void ClapInput::play(const clap_event_header& event) {
    if (event.space_id != CLAP_CORE_EVENT_SPACE_ID)
        return;
    switch (event.type) {
    case CLAP_EVENT_NOTE_ON:
    case CLAP_EVENT_NOTE_OFF:
    case CLAP_EVENT_NOTE_CHOKE:
        if (const auto* note = as<clap_event_note>(event))
            play_note(*note);
        break;
    case CLAP_EVENT_MIDI:
        if (const auto* midi = as<clap_event_midi>(event))
            play_midi(*midi);
        break;
    case CLAP_EVENT_MIDI_SYSEX:
        if (const auto* sysex = as<clap_event_midi_sysex>(event);
            sysex != nullptr && sysex->buffer != nullptr && is_our_port(sysex->port_index))
            player.add_message({sysex->buffer, sysex->size}, event.time);
        break;
    default:
        break;
    }
}

void ClapInput::send(unsigned kind, unsigned channel, unsigned data1, unsigned data2,
                     uint32_t frame) {
    const uint8_t message[] = {midi_status(kind, channel), uint8_t(data1), uint8_t(data2)};
    player.add_message(message, frame);
}

void ClapInput::play_note(const clap_event_note& event) {
    const bool is_channel = is_in(event.channel, NUM_CHANNELS);
    const bool is_key = is_in(event.key, 128);
    if (!is_our_port(event.port_index))
        return;
    if (event.header.type == CLAP_EVENT_NOTE_ON) {
        if (!is_channel || !is_key)
            return;
        notes.begin(unsigned(event.channel), unsigned(event.key),
                    std::max(event.note_id, NoteTable::ANY));
        send(MIDI_NOTE_ON, unsigned(event.channel), unsigned(event.key),
             velocity_byte(event.velocity), event.header.time);
        return;
    }
    if ((!is_channel && event.channel != NoteTable::ANY) ||
        (!is_key && event.key != NoteTable::ANY))
        return;
    // There is no faster end of a single note than its release: a choke is one.
    notes.end_each(std::max(event.note_id, NoteTable::ANY), event.channel, event.key,
                   [&](unsigned channel, unsigned key) {
                       send(MIDI_NOTE_OFF, channel, key, 0, event.header.time);
                   });
}

void ClapInput::play_midi(const clap_event_midi& event) {
    if (!is_our_port(event.port_index))
        return;
    const unsigned kind = midi_kind(event.data[0]);
    const unsigned channel = midi_channel(event.data[0]);
    if (kind == MIDI_NOTE_ON && event.data[1] < 128 && event.data[2] > 0)
        notes.begin(channel, event.data[1]);
    else if ((kind == MIDI_NOTE_ON || kind == MIDI_NOTE_OFF) && event.data[1] < 128)
        notes.end(channel, event.data[1]);
    player.add_message(event.data, event.header.time);
}

} // namespace tarquil
