// How filters take their settings.

#pragma once

#include <cmath>

#include "softsynth/parameters/constants.h"

namespace tarquil {

// Octaves above 20 Hz to radians per sample.
inline float cutoff_omega(float octaves) {
    return std::exp2(octaves) * OMEGA_20HZ;
}
inline double cutoff_hertz(float octaves) {
    return double(cutoff_omega(octaves)) / double(RADIANS_PER_HZ);
}

// The factor A of the cookbook's peaking and shelving filters, which gain A^2.
inline float filter_gain_factor(float power_of_ten) {
    return std::pow(10.0F, power_of_ten);
}
inline double filter_gain(float power_of_ten) {
    const auto factor = double(filter_gain_factor(power_of_ten));
    return factor * factor;
}

} // namespace tarquil
