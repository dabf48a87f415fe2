// A limiter: no sample beyond the ceiling, and every sample as it was while none would be.
//
// Own design, after the usual scheme of a sliding minimum that is averaged over the same length:
//
//   wanted(t)  = min(1, ceiling / peak(t))          peak of both sides
//   held(t)    = min of wanted(t - L .. t), rising back by a share of what is left each sample
//   gain(t)    = mean of held(t - L + 1 .. t)
//   out(t)     = in(t - L) gain(t)
//
// Each of the L values in the mean has seen in(t - L), so that the gain is at most what that sample
// wants.  The sum is exact, hence 1 again after every peak: gains have 24 bits and lie between
// 1/4 and 1, their sum needs 32 of a double's 53.

#pragma once

#include <array>
#include <cstdint>

namespace tarquil {

class Limiter {
  public:
    static constexpr uint32_t LOOK_AHEAD = 64;     // frames, also the delay
    static constexpr float CEILING = 0.891250938F; // -1 dBFS

    // Limits interleaved stereo in place; what comes out is LOOK_AHEAD frames late.  Input beyond
    // four times the ceiling is clipped there.
    void render(float* frames, uint32_t num_frames);

  private:
    static constexpr uint32_t WINDOW = LOOK_AHEAD + 1;

    float smallest_wanted(float wanted);

    // memory
    struct Wish {
        uint32_t time = 0;
        float gain = 1.0F;
    };
    std::array<Wish, WINDOW> wishes{}; // a queue with rising gains: its front is the minimum
    uint32_t first_wish = 0;
    uint32_t num_wishes = 0;
    uint32_t time = 0;
    float last_held = 1.0F;
    std::array<float, LOOK_AHEAD> held = ones();
    double held_sum = LOOK_AHEAD;
    std::array<float, 2 * LOOK_AHEAD> delayed{};
    uint32_t position = 0; // in both rings

    static constexpr std::array<float, LOOK_AHEAD> ones() {
        std::array<float, LOOK_AHEAD> gains{};
        gains.fill(1.0F);
        return gains;
    }
};

} // namespace tarquil
