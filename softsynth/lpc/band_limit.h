// A steep low-pass: a recording that ends at 4 or 8 kHz is spoken without what a filter of ten
// poles would add above.
//
// Elliptic of order 10, 0.1 dB of ripple, 60 dB down from 1.065 times the cutoff on, by the
// bilinear transform with the cutoff kept in place.  Source of the design: S. J. Orfanidis,
// "Lecture Notes on Elliptic Filter Design", 2006.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarquil {

class BandLimit {
  public:
    // From 20 kHz up nothing is done.
    explicit BandLimit(double cutoff_hz);

    // In place.
    void process(float* samples, uint32_t num_samples);

  private:
    static constexpr size_t NUM_SECTIONS = 5;

    struct Section {
        // coefficients
        float b0 = 0.0F; // b2 is the same
        float b1 = 0.0F;
        float a1 = 0.0F;
        float a2 = 0.0F;
        // memory
        float state1 = 0.0F;
        float state2 = 0.0F;
    };

    bool is_off;
    std::array<Section, NUM_SECTIONS> sections{};
};

} // namespace tarquil
