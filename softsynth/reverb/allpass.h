// An all-pass section with the fixed feedback 0.5.
//
//   output = b - x,  b the oldest sample;   new sample = x + b / 2
//
// After M. R. Schroeder, "Natural sounding artificial reverberation" (1962), but with a direct path
// of -1 instead of -1/2: the gain runs from 1 to 5/3 over frequency.  That is part of the sound.
// Stable, since the feedback is below 1.

#pragma once

class allpass {
  public:
    static constexpr float FEEDBACK = 0.5F;

    // The delay memory, `size` floats, is the owner's.
    void setbuffer(float* memory, int size) {
        buffer = memory;
        bufsize = size;
    }

    float process(float input) {
        const float b = buffer[bufidx];
        buffer[bufidx] = input + b * FEEDBACK;
        bufidx++;
        if (bufidx >= bufsize)
            bufidx = 0;
        return b - input;
    }

  private:
    float* buffer = nullptr;
    int bufsize = 0;
    int bufidx = 0;
};
