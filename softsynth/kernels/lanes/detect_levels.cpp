// The compressors' level followers with the compressors in lanes.

#include "softsynth/effects/compressor_constants.h"
#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/lanes.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

using Signals = Lanes<LevelDetectors::SIGNALS>;

} // namespace

void detect_levels(LevelDetectors& detectors, float* levels, uint32_t num_frames) {
    constexpr uint32_t SIGNALS = LevelDetectors::SIGNALS;
    // What has no detector follows the first one's signal.
    const float* frames[SIGNALS];
    for (uint32_t d = 0; d < SIGNALS; d++)
        frames[d] = detectors.frames[d < detectors.count ? d : 0];
    const Signals attack = Signals::load(detectors.attack_factor);
    const Signals release = Signals::load(detectors.release_factor);
    const Signals decay = Signals::splat(COMPRESSOR_PEAK_INCREMENT);
    const Signals lowest = Signals::splat(COMPRESSOR_MIN_LEVEL);
    Signals p = Signals::load(detectors.peak);
    Signals e = Signals::load(detectors.level);
    for (uint32_t i = 0; i < num_frames; i++) {
        const Signals first = abs(load_halves(frames[0] + 2 * i, frames[1] + 2 * i));
        const Signals second = abs(load_halves(frames[2] + 2 * i, frames[3] + 2 * i));
        p = max(p, max(evens(first, second), odds(first, second)));
        e = select(p <= e, max(e * release, lowest), min(e * attack, p));
        e.store(levels + SIGNALS * i);
        p = max(p * decay, lowest);
    }
    p.store(detectors.peak);
    e.store(detectors.level);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
