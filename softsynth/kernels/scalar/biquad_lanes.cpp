// Biquad cascades one after the other, section by section.

#include "softsynth/kernels/biquad_lanes.h"

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

void KERNEL_NAMESPACE::biquad_lanes(const BiquadLanes& lanes, uint32_t first, uint32_t length) {
    for (uint32_t lane = 0; lane < lanes.count; lane++)
        biquad_series(equal_sections(*lanes.coefficients[lane], lanes.memory[lane], lanes.depth),
                      lanes.signal[lane] + first, length);
}

} // namespace tarquil
