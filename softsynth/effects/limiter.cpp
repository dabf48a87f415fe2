// A limiter without delay: no sample beyond the ceiling, and every sample as it was while none
// would be.

#include "softsynth/effects/limiter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarquil {

namespace {

// What is left of the reduction falls to 1/e in 80 ms.
constexpr float RELEASE = 0.00028F;
// Below it the steps back are lost in rounding.
constexpr float SMALLEST_REDUCTION = 3e-4F;

} // namespace

void Limiter::render(float* frames, uint32_t num_frames) {
    for (uint32_t done = 0; done < num_frames; done += PIECE)
        render_piece(frames + size_t(2) * done, std::min(PIECE, num_frames - done));
}

void Limiter::render_piece(float* frames, uint32_t num_frames) {
    float wanted[PIECE];
    float least = 1.0F;
    for (uint32_t i = 0; i < num_frames; i++) {
        const float peak = std::max(std::fabs(frames[2 * i]), std::fabs(frames[2 * i + 1]));
        wanted[i] = peak > CEILING ? CEILING / peak : 1.0F;
        least = std::min(least, wanted[i]);
    }
    if (least == 1.0F && is_idle())
        return;
    remember(least, num_frames);
    float gains[PIECE];
    if (least < gain)
        fall(wanted, gains, num_frames);
    else
        rise(gains, num_frames);
    for (uint32_t i = 0; i < 2 * num_frames; i++) // the product may round up by half a step
        frames[i] = std::clamp(frames[i] * gains[i / 2], -CEILING, CEILING);
}

void Limiter::fall(const float* wanted, float* gains, uint32_t num_frames) {
    for (uint32_t first = 0; first < num_frames;) {
        uint32_t last = num_frames;
        float slope = 0.0F;
        for (uint32_t i = first; i < num_frames; i++) {
            const float needed = (wanted[i] - gain) / float(i - first + 1);
            if (needed < slope) {
                slope = needed;
                last = i;
            }
        }
        for (uint32_t i = first; i < last; i++)
            gains[i] = gain + slope * float(i - first + 1);
        if (last < num_frames)
            gain = gains[last] = wanted[last];
        first = last + 1;
    }
}

void Limiter::rise(float* gains, uint32_t num_frames) {
    const float target = least_remembered();
    for (uint32_t i = 0; i < num_frames; i++) {
        const float risen = gain + (target - gain) * RELEASE;
        gain = std::min(target, 1.0F - risen < SMALLEST_REDUCTION ? 1.0F : risen);
        gains[i] = gain;
    }
}

void Limiter::remember(float least_wanted, uint32_t num_frames) {
    if (slot_frames >= SLOT) {
        slot = (slot + 1) % NUM_SLOTS;
        remembered[slot] = 1.0F;
        slot_frames = 0;
    }
    remembered[slot] = std::min(remembered[slot], least_wanted);
    slot_frames += num_frames;
}

} // namespace tarquil
