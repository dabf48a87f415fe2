// The compressors' level followers, one after the other.

#include <algorithm>
#include <cmath>

#include "softsynth/effects/compressor.h"
#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

void KERNEL_NAMESPACE::detect_levels(LevelDetectors& detectors, float* levels,
                                     uint32_t num_frames) {
    for (uint32_t d = 0; d < detectors.count; d++) {
        float p = detectors.peak[d];
        float e = detectors.level[d];
        const float* frame = detectors.frames[d];
        for (uint32_t i = 0; i < num_frames; i++, frame += 2) {
            p = std::max(p, std::max(std::fabs(frame[0]), std::fabs(frame[1])));
            e = compressor_next_level(e, p, detectors.attack_factor[d],
                                      detectors.release_factor[d]);
            levels[LevelDetectors::SIGNALS * i + d] = e;
            p = compressor_decayed_peak(p);
        }
        detectors.peak[d] = p;
        detectors.level[d] = e;
    }
}

} // namespace tarquil
