// A carrier (a pad, say) made fit to speak: all its frequencies as loud as each other, and its
// level even.
//
// An adaptive lattice on the bent axis takes out what can be predicted from the last 50 ms; what is
// left, even on the bent axis, is made even on the straight one (by the inverse of sqrt(1 - w^2) /
// (1 - w z^-1), whose power is the bent axis' derivative) and divided by its level.  Source of the
// adaptation: J. Makhoul, "Stable and efficient lattice methods for linear prediction", IEEE Trans.
// ASSP 25 (1977) 423-428 (Burg's coefficients over an exponential window).

#pragma once

#include <array>
#include <cstddef>

namespace tarquil {

class CarrierWhitener {
  public:
    explicit CarrierWhitener(double filter_warping);

    // The next sample, of power 1 while the carrier sounds; any `x` gives a finite one.
    float process(float x);

    // 0: the carrier is silent, 1: it sounds.
    [[nodiscard]] float get_presence() const { return presence; }

  private:
    static constexpr size_t ORDER = 16;

    struct Section {
        float backward = 0.0F; // g_(m-1), at the sample before
        float delayed = 0.0F;  // D g_(m-1), at the sample before
        float product = 0.0F;  // averages that the coefficient is made of
        float power = 0.0F;
    };

    // settings
    float pole; // the all-pass's
    float scale;

    // memory
    std::array<Section, ORDER> sections{};
    float predicted = 0.0F; // the last sample's residue
    float power_out = 0.0F;
    float power_in = 0.0F;
    float presence = 0.0F;
};

} // namespace tarquil
