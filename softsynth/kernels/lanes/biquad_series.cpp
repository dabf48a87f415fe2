// Different second-order sections one behind the other, all in one loop: a section waits for its
// own last output, and the others' work on earlier samples fills that time.  Not in lanes, since
// the sections' samples would have to be moved from lane to lane.

#include "softsynth/kernels/biquad_series.h"

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

template <int SECTIONS, int CHANNELS>
void run(const BiquadSeries& series, float* samples, uint32_t frames) {
    BiquadCoefficients c[SECTIONS];
    float z1[SECTIONS][CHANNELS];
    float z2[SECTIONS][CHANNELS];
    for (int k = 0; k < SECTIONS; k++) {
        c[k] = *series.coefficients[k];
        for (int channel = 0; channel < CHANNELS; channel++) {
            z1[k][channel] = series.memory[k][channel].z1;
            z2[k][channel] = series.memory[k][channel].z2;
        }
    }
    for (uint32_t i = 0; i < frames; i++) {
        for (int channel = 0; channel < CHANNELS; channel++) {
            float x = samples[uint32_t(CHANNELS) * i + uint32_t(channel)];
            for (int k = 0; k < SECTIONS; k++) {
                const float y = c[k].b0 * x + z1[k][channel];
                z1[k][channel] = c[k].b1 * x - c[k].a1 * y + z2[k][channel];
                z2[k][channel] = c[k].b2 * x - c[k].a2 * y;
                x = y;
            }
            samples[uint32_t(CHANNELS) * i + uint32_t(channel)] = x;
        }
    }
    for (int k = 0; k < SECTIONS; k++) {
        for (int channel = 0; channel < CHANNELS; channel++)
            series.memory[k][channel] = {z1[k][channel], z2[k][channel]};
    }
}

} // namespace

void biquad_series(const BiquadSeries& series, float* samples, uint32_t frames) {
    using Run = void (*)(const BiquadSeries&, float*, uint32_t);
    constexpr Run RUN[][2] = {{run<1, 1>, run<1, 2>}, {run<2, 1>, run<2, 2>},
                              {run<3, 1>, run<3, 2>}, {run<4, 1>, run<4, 2>},
                              {run<5, 1>, run<5, 2>}, {run<6, 1>, run<6, 2>}};
    static_assert(sizeof(RUN) / sizeof(RUN[0]) == BiquadSeries::MAX_SECTIONS);
    RUN[series.count - 1][series.channels - 1](series, samples, frames);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
