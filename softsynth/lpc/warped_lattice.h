// The synthesis filter: an all-pole lattice whose delays are all-passes.
//
// With reflection coefficients k_m, c_m = sqrt(1 - k_m^2) and for m = p ... 1
//   f_(m-1) = c_m f_m - k_m d_m,   g_m = k_m f_m + c_m d_m,   d_m = D g_(m-1),   g_0 = f_0,
// input f_p, output f_0, this is the normalised lattice of A. H. Gray and J. D. Markel, "A
// normalized digital filter structure", IEEE Trans. ASSP 23 (1975) 268-277.  D is here the all-pass
// (z^-1 - w) / (1 - w z^-1) instead of z^-1, which bends the frequency axis: H. W. Strube, "Linear
// prediction on a warped frequency scale", J. Acoust. Soc. Am. 68 (1980) 1071-1076.  It is realised
// by d = -w g + sqrt(1 - w^2) s, s' = sqrt(1 - w^2) g + w s.
//
// All of these are rotations.  So the energy of the memory grows by no more than that of the input,
// whatever the coefficients do from one sample to the next, and white noise comes out as loud as it
// went in (on the warped axis).
//
// D passes g on within the sample, a loop without a delay.  It is solved by g_m = alpha_m f_m +
// beta_m: alpha_0 = 1, beta_0 = 0, u_m = sqrt(1 - w^2) s_m - w beta_(m-1), r_m = 1 / (1 - w k_m
// alpha_(m-1)), alpha_m = (k_m - w alpha_(m-1)) r_m, beta_m = r_m c_m u_m, and
// f_(m-1) = r_m c_m f_m - r_m k_m u_m.

#pragma once

#include <array>
#include <cstdint>

#include "softsynth/lpc/line_spectrum.h"

namespace tarquil {

class WarpedLattice {
  public:
    // 0 <= warping < 1; 0 is the plain lattice.
    explicit WarpedLattice(double filter_warping);

    void set_reflections(const Reflections& reflections);

    // In place.
    void process(float* samples, uint32_t num_samples);

    void reset() { states = {}; }

  private:
    // settings
    double warping;
    float pole;  // w
    float cross; // sqrt(1 - w^2)

    // coefficients, by m - 1
    std::array<float, LPC_ORDER> forward{};  // r_m c_m
    std::array<float, LPC_ORDER> backward{}; // r_m k_m
    std::array<float, LPC_ORDER> alphas{};   // alpha_(m-1)

    // memory
    std::array<float, LPC_ORDER> states{};
};

} // namespace tarquil
