// Biquad cascades one after the other, section by section.

#include "softsynth/kernels/biquad_lanes.h"

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

void KERNEL_NAMESPACE::biquad_lanes(const BiquadLanes& lanes, uint32_t first, uint32_t length) {
    for (uint32_t lane = 0; lane < lanes.count; lane++) {
        const BiquadCoefficients c = *lanes.coefficients[lane];
        float* samples = lanes.signal[lane] + first;
        for (uint32_t section = 0; section < lanes.depth; section++) {
            BiquadState state = lanes.memory[lane][section];
            for (uint32_t i = 0; i < length; i++) {
                const float x = samples[i];
                const float y = c.b0 * x + state.z1;
                state.z1 = c.b1 * x - c.a1 * y + state.z2;
                state.z2 = c.b2 * x - c.a2 * y;
                samples[i] = y;
            }
            lanes.memory[lane][section] = state;
        }
    }
}

} // namespace tarquil
