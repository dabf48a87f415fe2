// The reverb: eight parallel combs and four all-passes in series on either side.
//
// The Schroeder-Moorer structure in the well-known public-domain arrangement of "Jezar at
// Dreampoint" (2000), at the fixed rate of 44100 Hz: wet signal only, no freeze mode.  Stable for a
// comb feedback below 1; the room size keeps it within 0.7..0.98.

#pragma once

#include <cstdint>

#include "softsynth/kernels/reverb_tank.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

class revmodel {
  public:
    revmodel();
    revmodel(const revmodel&) = delete;
    revmodel& operator=(const revmodel&) = delete;

    // Settings of 0..1; update() makes them take effect.
    void setroomsize(float value);
    void setdamp(float value);
    void setwet(float value);
    void setwidth(float value);
    void update();

    // Interleaved stereo: adds the wet signal to `out`.
    void processmix(const float* in, float* out, long frames);
    // The same, but assigns.
    void processreplace(const float* in, float* out, long frames);

    // What the combs make of the settings of 0..1.
    static float comb_feedback(float roomsize_setting) {
        constexpr float SCALE = 0.28F;
        constexpr float OFFSET = 0.7F;
        return roomsize_setting * SCALE + OFFSET;
    }
    static float comb_damping(float damp_setting) { return damp_setting * 0.4F; }
    static constexpr int LONGEST_COMB = 1640; // samples, the last one of the right side

    // Clears all delay memory.
    void mute();

  private:
    static constexpr int MEMORY_LENGTH = 25450; // floats, the sum of all delays

    // Calls store(sample, wet sample) for each sample of `out`.  Silence into an empty reverb is
    // not sent through it.
    template <typename Store>
    void process(const float* in, float* out, long frames, const Store& store);
    void mute_if_not_finite(float* out, long frames);
    [[nodiscard]] bool is_empty() const;

    // settings
    float roomsize = 0.0F; // the combs' feedback
    float damp = 0.0F;
    float wet = 0.0F;
    float wet1 = 0.0F; // same side
    float wet2 = 0.0F; // other side
    float width = 0.0F;

    // memory
    ReverbTank tank;
    float memory[MEMORY_LENGTH] = {};
    bool known_empty = true; // all memory is 0
};

} // namespace tarquil
