// A comb filter with a one-pole low-pass in its feedback.
//
//   s <- s damp1 + y damp2,  y the oldest sample;   new sample = x + s feedback
//
// After J. A. Moorer, "About this reverberation business" (1979).  The low-pass has a gain of
// 1 at 0 Hz and less above (damp1 + damp2 = 1), so every feedback between -1 and 1 is stable.

#pragma once

#include <cmath>

class comb {
  public:
    // The delay memory, `size` floats, is the owner's.
    void setbuffer(float* memory, int size) {
        buffer = memory;
        bufsize = size;
    }
    void setfeedback(float value) { feedback = value; }
    void setdamp(float value) {
        damp1 = value;
        damp2 = 1.0F - value;
    }

    float process(float input) {
        const float y = buffer[bufidx];
        filterstore = filterstore * damp1 + y * damp2;
        buffer[bufidx] = input + filterstore * feedback;
        bufidx++;
        if (bufidx >= bufsize)
            bufidx = 0;
        return y;
    }

    // The owner clears the delay memory.
    void mute() { filterstore = 0.0F; }
    [[nodiscard]] bool is_finite() const { return std::isfinite(filterstore); }

  private:
    // settings
    float feedback = 0.0F;
    float damp1 = 0.0F;
    float damp2 = 1.0F;

    // memory
    float filterstore = 0.0F;
    float* buffer = nullptr;
    int bufsize = 0;
    int bufidx = 0;
};
