// Responses of the second-order sections that crossovers are made of, for tests.

#pragma once

#include <cmath>
#include <complex>

namespace tarquil {

enum class SectionType { LOW_PASS, HIGH_PASS };

// R. Bristow-Johnson, "Cookbook formulae for audio EQ biquad filter coefficients": with c the
// cosine of the cutoff, numerator (1 -+ c) / 2 * (1 +- 1/z)^2, denominator
// 1 + alpha - 2 c / z + (1 - alpha) / z^2.  Cutoff and omega in radians per sample.
inline std::complex<double> cookbook_section(SectionType type, double cutoff, double q,
                                             double omega) {
    const double sign = type == SectionType::LOW_PASS ? 1 : -1;
    const double c = std::cos(cutoff);
    const double alpha = std::sin(cutoff) / (2 * q);
    const std::complex<double> delay = std::polar(1.0, -omega);
    const std::complex<double> zeros = 1.0 + sign * delay;
    return (1 - sign * c) / 2 * zeros * zeros /
           (1 + alpha - 2 * c * delay + (1 - alpha) * delay * delay);
}

} // namespace tarquil
