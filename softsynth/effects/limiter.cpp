// A limiter: no sample beyond the ceiling, and every sample as it was while none would be.

#include "softsynth/effects/limiter.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

constexpr float LARGEST_INPUT = 4.0F * Limiter::CEILING;

// What is left of the reduction falls to 1/e in 80 ms.
constexpr float RELEASE = 0.00028F;
// Below it the steps back are lost in rounding.
constexpr float SMALLEST_REDUCTION = 3e-4F;

} // namespace

float Limiter::smallest_wanted(float wanted) {
    while (num_wishes > 0 && wishes[(first_wish + num_wishes - 1) % WINDOW].gain >= wanted)
        num_wishes--;
    if (num_wishes > 0 && time - wishes[first_wish].time > LOOK_AHEAD) {
        first_wish = (first_wish + 1) % WINDOW;
        num_wishes--;
    }
    wishes[(first_wish + num_wishes) % WINDOW] = {time, wanted};
    num_wishes++;
    return wishes[first_wish].gain;
}

void Limiter::render(float* frames, uint32_t num_frames) {
    for (uint32_t i = 0; i < num_frames; i++, time++) {
        float* frame = frames + 2 * size_t(i);
        const float left = std::clamp(frame[0], -LARGEST_INPUT, LARGEST_INPUT);
        const float right = std::clamp(frame[1], -LARGEST_INPUT, LARGEST_INPUT);
        const float peak = std::max(std::fabs(left), std::fabs(right));
        const float wanted = peak > CEILING ? CEILING / peak : 1.0F;
        const float risen = last_held + (1.0F - last_held) * RELEASE;
        const float rest = 1.0F - risen < SMALLEST_REDUCTION ? 1.0F : risen;
        last_held = std::min(smallest_wanted(wanted), rest);

        held_sum += double(last_held) - double(held[position]);
        held[position] = last_held;
        const auto gain = float(held_sum / LOOK_AHEAD);
        float* old = &delayed[2 * size_t(position)];
        // The product may round up by half a step.
        frame[0] = std::clamp(old[0] * gain, -CEILING, CEILING);
        frame[1] = std::clamp(old[1] * gain, -CEILING, CEILING);
        old[0] = left;
        old[1] = right;
        position = (position + 1) % LOOK_AHEAD;
    }
}

} // namespace tarquil
