// The control side of a player: what is played by hand in a window.

#include "common/assertion.h"
#include "midi/gm/midi_numbers.h"
#include "player/player.h"

namespace tarquil {

// No change of what a bank holds: nothing is noted.
void Player::play_message(unsigned kind, unsigned channel, unsigned data1, unsigned data2) {
    TARQ_ASSERT(channel < unsigned(NUM_CHANNELS));
    TARQ_ASSERT(data1 < 128 && data2 < 128);
    const LockHolder holder(lock);
    if (!link.edits.push({.kind = PlayerEdit::Kind::MESSAGE,
                          .program = midi_status(kind, channel),
                          .number = uint8_t(data1),
                          .value = uint8_t(data2)}))
        link.messages_lost = true;
}

void Player::play_key(unsigned channel, unsigned key, unsigned velocity) {
    play_message(velocity > 0 ? MIDI_NOTE_ON : MIDI_NOTE_OFF, channel, key, velocity);
}

void Player::bend(unsigned channel, unsigned value) {
    play_message(MIDI_PITCH_BEND, channel, value & 0x7FU, value >> 7U);
}

void Player::set_modulation(unsigned channel, unsigned value) {
    if (dialect() == MidiDialect::GENERAL_MIDI)
        play_message(MIDI_CONTROL_CHANGE, channel, MIDI_MODULATION, value);
}

void Player::set_sustain(unsigned channel, bool is_down) {
    if (dialect() == MidiDialect::GENERAL_MIDI)
        play_message(MIDI_CONTROL_CHANGE, channel, MIDI_SUSTAIN, is_down ? 127 : 0);
}

void Player::strike_again() {
    const LockHolder holder(lock);
    // One that finds no room is not missed.
    link.edits.push({.kind = PlayerEdit::Kind::STRIKE_AGAIN, .program = uint8_t(edited_program())});
}

} // namespace tarquil
