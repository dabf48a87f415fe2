// A Schroeder all-pass section with the fixed feedback 0.5.

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
