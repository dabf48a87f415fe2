// Making and reading wavetables.

#include <algorithm>

#include "bench/kernels/kernel_row.h"
#include "player/shared_waveforms.h"
#include "softsynth/wavetables/waveform.h"
#include "softsynth/wavetables/wavetable_builder.h"

namespace tarquil {

namespace {

void build_all() {
    static std::vector<float> samples(size_t(NUM_WAVETABLES) * WAVETABLE_SIZE);
    static const Waveform square(OSC_SQUARE);
    std::vector<unsigned> harmonics;
    for (unsigned k = 0; k < square.size(); k++)
        harmonics.push_back(square.table(k).get_harmonics());
    for (const AmplitudeFunction amplitude :
         {Waveform::sineWaveAmplitude, Waveform::sawWaveAmplitude, Waveform::squareWaveAmplitude,
          Waveform::triangleWaveAmplitude})
        build_wavetables(samples.data(), WAVETABLE_SIZE, WAVETABLE_SIZE, harmonics, amplitude);
}

} // namespace

std::vector<KernelRow> table_rows() {
    return {{"4 x 128 wavetables built", KernelRow::MICROSECONDS, 1, build_all},
            {"all wavetables read from the cache", KernelRow::MICROSECONDS, 1,
             [] { const WaveformStore store(waveform_cache_folder()); }, false}};
}

} // namespace tarquil
