// The slope on which a sound ends at once without a click.
//
// Own design: 1 - (35 u^4 - 84 u^5 + 70 u^6 - 20 u^7), whose first three derivatives are 0 at both
// ends.  A tone of up to 700 Hz that it ends leaves less than -80 dB above 1.5 kHz.

#pragma once

#include <cstdint>

#include "softsynth/parameters/midi_event.h"

namespace tarquil {

class FadeOut {
  public:
    static constexpr uint32_t LENGTH = SILENCE_FADE_SAMPLES;

    // The gain `age` samples after the fade's start: 1 before it, 0 from LENGTH on.
    static float gain(int32_t age) {
        if (age <= 0)
            return 1.0F;
        if (age >= int32_t(LENGTH))
            return 0.0F;
        const float u = float(age) / float(LENGTH);
        const float u2 = u * u;
        return 1.0F - u2 * u2 * (35.0F + u * (-84.0F + u * (70.0F - 20.0F * u)));
    }

    // Multiplies `frames` interleaved stereo frames, the first of which is `age` samples after the
    // fade's start; whatever is there, 0 times it is 0.
    static void apply(float* samples, uint32_t frames, int32_t age) {
        for (uint32_t i = 0; i < frames; i++) {
            const float g = gain(age + int32_t(i));
            samples[2 * i] = g == 0.0F ? 0.0F : samples[2 * i] * g;
            samples[2 * i + 1] = g == 0.0F ? 0.0F : samples[2 * i + 1] * g;
        }
    }
};

} // namespace tarquil
