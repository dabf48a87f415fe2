// The crossover, section by section.

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

void KERNEL_NAMESPACE::split_bands(Crossover& crossover, float* low, float* high, uint32_t frames) {
    for (int stage = 0; stage < crossover.num_stages; stage++) {
        Crossover::Section s = crossover.sections[stage];
        for (uint32_t i = 0; i < 2 * frames; i += 2) {
            const float x[] = {low[i], low[i + 1], high[i], high[i + 1]};
            float y[Crossover::SIGNALS];
            for (int k = 0; k < Crossover::SIGNALS; k++) {
                const float in = crossover.b0[k] * x[k];
                y[k] = in + s.z1[k];
                s.z1[k] = crossover.b1[k] * x[k] - crossover.a1 * y[k] + s.z2[k];
                s.z2[k] = in - crossover.a2 * y[k];
            }
            low[i] = y[0];
            low[i + 1] = y[1];
            high[i] = y[2];
            high[i + 1] = y[3];
        }
        crossover.sections[stage] = s;
    }
}

} // namespace tarquil
