// What effects make of a level or a sample, from the engine's own functions.

#pragma once

#include <cstdint>
#include <vector>

#include "softsynth/parameters/controller_bytes.h"
#include "softsynth/parameters/osc_type.h"

namespace tarquil {

class WaveformStore;

// Linear, as the compressors take them.
struct CompressorCurve {
    float threshold = 1.0F;
    float ratio = 1.0F;
    float makeup = 1.0F;
};

// Of a band of the master compressor, and of insert effect `index` as a compressor.
CompressorCurve band_compressor_curve(const ControllerBytes& bytes, unsigned band);
CompressorCurve mono_compressor_curve(const ControllerBytes& bytes, unsigned index);

// The level at which a steady level comes out, both in dB.
double compressed_decibels(const CompressorCurve& curve, double decibels);

// Not below -180 dB.
double to_decibels(double level);

// The sample that insert effect `index` makes of `x`, if it is a distortion or an exciter; `x` if
// it is anything else.
float shaped_sample(const ControllerBytes& bytes, unsigned index, float x);

// `count` samples of an LFO's wave, at most MAX_NUM_SAMPLES, over `cycles` from `phase` (in cycles)
// on.
std::vector<float> lfo_wave(const WaveformStore& waves, OscType wave, double cycles, float phase,
                            uint32_t count);

} // namespace tarquil
