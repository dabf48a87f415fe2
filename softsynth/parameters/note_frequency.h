// The frequency of a note.

#pragma once

#include <cmath>

namespace tarquil {

// In Hz; `note` in semitones, MIDI numbering.  Equal temperament, A4 (note 69) = 440 Hz.
inline float note_frequency(float note) {
    return float(440.0 * std::exp2((double(note) - 69.0) / 12.0));
}

} // namespace tarquil
