// The oscillators' waveform at a note, from the engine's own oscillators.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "softsynth/parameters/controller_bytes.h"
#include "softsynth/parameters/families.h"
#include "softsynth/wavetables/waveform.h"

namespace tarquil {

// Samples at 44100 Hz.
struct WaveShape {
    // What each oscillator adds to the mix; empty for one that adds nothing.  With ring modulation
    // the first two are the factors, at their full level.
    std::array<std::vector<float>, NUM_OSCILLATORS> parts;
    std::vector<float> mix;
};

// One copy of each oscillator, in tune and at phase 0; or all its copies, as detuned and as spread
// in phase as those of a voice, by random numbers that are the same on every call.
enum class WaveCopies { ONE, ALL };

// `note` 0..127.  Without modulation.
WaveShape render_wave_shape(const WaveformStore& waves, const ControllerBytes& bytes, int note,
                            uint32_t num_samples, WaveCopies copies = WaveCopies::ONE);

} // namespace tarquil
