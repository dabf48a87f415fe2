// A signal split in two at a frequency.
//
// The lower and the upper half are second-order Butterworth responses, by the bilinear transform
// with the split frequency kept in place; their powers add up to 1 at every frequency, so that two
// unlike signals can be joined there without a bump.

#pragma once

namespace tarquil {

class BandSplitter {
  public:
    // 0 < hz <= 20000
    void set_frequency(double hz);

    float low(float x) {
        const float y = b_low * x + low_state1;
        low_state1 = 2.0F * b_low * x - a1 * y + low_state2;
        low_state2 = b_low * x - a2 * y;
        return y;
    }
    float high(float x) {
        const float y = b_high * x + high_state1;
        high_state1 = -2.0F * b_high * x - a1 * y + high_state2;
        high_state2 = b_high * x - a2 * y;
        return y;
    }

  private:
    // coefficients
    float b_low = 0.0F;
    float b_high = 0.0F;
    float a1 = 0.0F;
    float a2 = 0.0F;

    // memory
    float low_state1 = 0.0F;
    float low_state2 = 0.0F;
    float high_state1 = 0.0F;
    float high_state2 = 0.0F;
};

} // namespace tarquil
