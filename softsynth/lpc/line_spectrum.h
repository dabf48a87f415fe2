// Line spectral pairs, predictors and reflection coefficients.
//
// A predictor A(z) = 1 + sum a_m z^-m of even order p is half the sum of
//   P(z) = A(z) + z^-(p+1) A(1/z) = (1 + z^-1) prod over i odd  (1 - 2 cos w_i z^-1 + z^-2)
//   Q(z) = A(z) - z^-(p+1) A(1/z) = (1 - z^-1) prod over i even (1 - 2 cos w_i z^-1 + z^-2)
// and all its zeros lie inside the unit circle exactly if 0 < w_1 < w_2 < ... < w_p < pi.
// Sources: F. Itakura, "Line spectrum representation of linear predictor coefficients of speech
// signals", J. Acoust. Soc. Am. 57 (1975) S35; F. K. Soong and B.-H. Juang, "Line spectrum pair
// (LSP) and speech data compression", ICASSP 1984.

#pragma once

#include <array>
#include <optional>

#include "softsynth/lpc/speech_frame.h"

namespace tarquil {

using Predictor = std::array<double, LPC_ORDER + 1>; // a_0 = 1, a_1, ...
using LineCosines = std::array<double, LPC_ORDER>;   // cos w_i, descending
using Reflections = std::array<double, LPC_ORDER>;   // k_1, k_2, ...; each within -1..1

Predictor predictor_of_lines(const LineCosines& cosines);

// |A|^2 at the angle whose cosine is `x`.
double predictor_power(const LineCosines& cosines, double x);

// None for a predictor with zeros outside the unit circle or too close to it to be told apart.
// Source of the search: P. Kabal and R. P. Ramachandran, "The computation of line spectral
// frequencies using Chebyshev polynomials", IEEE Trans. ASSP 34 (1986) 1419-1426.
std::optional<LineCosines> lines_of_predictor(const Predictor& predictor);

// The step-down recursion (J. D. Markel and A. H. Gray, "Linear Prediction of Speech", 1976).  What
// rounding would put beyond +-1 stays within, so that any filter made of them is stable.
Reflections reflections_of_predictor(const Predictor& predictor);

} // namespace tarquil
