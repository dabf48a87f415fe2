// The crossovers one after the other, section by section.

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

void KERNEL_NAMESPACE::split_bands(const BandSplit& split, uint32_t frames) {
    for (uint32_t b = 0; b < split.count; b++) {
        Crossover& crossover = *split.crossovers[b];
        float* low = split.low[b];
        float* high = split.high;
        for (uint32_t i = 0; i < 2 * frames; i++)
            low[i] = high[i];
        for (int stage = 0; stage < Crossover::STAGES; stage++) {
            float z1[Crossover::SIGNALS];
            float z2[Crossover::SIGNALS];
            for (int k = 0; k < Crossover::SIGNALS; k++) {
                z1[k] = crossover.z1[stage][k];
                z2[k] = crossover.z2[stage][k];
            }
            for (uint32_t i = 0; i < 2 * frames; i += 2) {
                const float x[] = {low[i], low[i + 1], high[i], high[i + 1]};
                float y[Crossover::SIGNALS];
                for (int k = 0; k < Crossover::SIGNALS; k++) {
                    const float in = crossover.b0[k] * x[k];
                    y[k] = in + z1[k];
                    z1[k] = crossover.b1[k] * x[k] - crossover.a1 * y[k] + z2[k];
                    z2[k] = in - crossover.a2 * y[k];
                }
                low[i] = y[0];
                low[i + 1] = y[1];
                high[i] = y[2];
                high[i + 1] = y[3];
            }
            for (int k = 0; k < Crossover::SIGNALS; k++) {
                crossover.z1[stage][k] = z1[k];
                crossover.z2[stage][k] = z2[k];
            }
        }
    }
}

} // namespace tarquil
