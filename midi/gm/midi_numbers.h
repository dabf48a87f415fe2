// Controller numbers of General MIDI that the dialect knows by name.

#pragma once

#include "midi/midi_message.h"

namespace tarquil {

enum MidiController : unsigned {
    MIDI_BANK_MSB = 0,
    MIDI_MODULATION = 1,
    MIDI_PORTAMENTO_TIME = 5,
    MIDI_DATA_MSB = 6,
    MIDI_VOLUME = 7,
    MIDI_PAN = 10,
    MIDI_EXPRESSION = 11,
    MIDI_BANK_LSB = 32,
    MIDI_DATA_LSB = 38,
    MIDI_SUSTAIN = 64,
    MIDI_PORTAMENTO = 65,
    MIDI_SOSTENUTO = 66,
    MIDI_SOFT = 67,
    MIDI_RESONANCE = 71,
    MIDI_RELEASE = 72,
    MIDI_ATTACK = 73,
    MIDI_BRIGHTNESS = 74,
    MIDI_DECAY = 75,
    MIDI_VIBRATO_RATE = 76,
    MIDI_VIBRATO_DEPTH = 77,
    MIDI_VIBRATO_DELAY = 78,
    MIDI_REVERB = 91,
    MIDI_CHORUS = 93,
    MIDI_DATA_INCREMENT = 96,
    MIDI_DATA_DECREMENT = 97,
    MIDI_NRPN_LSB = 98,
    MIDI_NRPN_MSB = 99,
    MIDI_RPN_LSB = 100,
    MIDI_RPN_MSB = 101,
    MIDI_SOUND_OFF = 120,
    MIDI_RESET = 121,
    MIDI_OMNI_OFF = 124,
    MIDI_OMNI_ON = 125,
    MIDI_MONO = 126,
    MIDI_POLY = 127,
};

inline constexpr unsigned MIDI_CENTRE = 64;

// From here on a pedal is down.
inline constexpr unsigned MIDI_PEDAL_DOWN = 64;

} // namespace tarquil
