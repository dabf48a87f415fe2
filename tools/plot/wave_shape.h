// The oscillators' waveform at a note, from the engine's own oscillators.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "instrument/instrument.h"

inline constexpr unsigned NUM_OSCILLATORS = 3;

// Samples at 44100 Hz.
struct WaveShape {
    // What each oscillator adds to the mix; empty for one that adds nothing.  With ring modulation
    // the first two are the factors, at their full level.
    std::array<std::vector<float>, NUM_OSCILLATORS> parts;
    std::vector<float> mix;
};

// `note` 0..127.  One copy of each oscillator, in tune, phase 0, without modulation.
WaveShape render_wave_shape(const Instrument& instrument, int note, uint32_t num_samples);
