// Different second-order sections one behind the other, section by section.

#include "softsynth/kernels/biquad_series.h"

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

void KERNEL_NAMESPACE::biquad_series(const BiquadSeries& series, float* samples, uint32_t frames) {
    for (uint32_t section = 0; section < series.count; section++) {
        const BiquadCoefficients c = *series.coefficients[section];
        for (uint32_t channel = 0; channel < series.channels; channel++) {
            BiquadState state = series.memory[section][channel];
            for (uint32_t i = 0; i < frames; i++) {
                float& sample = samples[series.channels * i + channel];
                const float x = sample;
                const float y = c.b0 * x + state.z1;
                state.z1 = c.b1 * x - c.a1 * y + state.z2;
                state.z2 = c.b2 * x - c.a2 * y;
                sample = y;
            }
            series.memory[section][channel] = state;
        }
    }
}

} // namespace tarquil
