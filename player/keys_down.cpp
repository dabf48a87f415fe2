// Which keys are down on each channel, and how hard they were struck.

#include "player/keys_down.h"

#include "midi/gm/gm_message.h"
#include "midi/gm/midi_numbers.h"

namespace tarquil {

namespace {

bool ends_notes(unsigned controller) {
    return controller == MIDI_SOUND_OFF || controller >= MIDI_ALL_NOTES_OFF;
}

} // namespace

void KeysDown::follow_note(const midi_event& event) {
    const unsigned kind = midi_kind(event.status);
    if (kind == MIDI_NOTE_ON || kind == MIDI_NOTE_OFF)
        velocities[midi_channel(event.status)][event.data1] =
            kind == MIDI_NOTE_ON ? event.data2 : uint8_t(0);
}

void KeysDown::follow_event(const midi_event& event) {
    if (midi_kind(event.status) == MIDI_SILENCE)
        velocities[midi_channel(event.status)] = {};
    else
        follow_note(event);
}

void KeysDown::follow_message(const midi_event& record) {
    if (record.status == GM_RELEASE_ALL)
        clear();
    else if (midi_kind(record.status) == MIDI_CONTROL_CHANGE && ends_notes(record.data1))
        velocities[midi_channel(record.status)] = {};
    else
        follow_note(record);
}

} // namespace tarquil
