// Linear prediction of any order.
//
// Source of the method: J. Makhoul, "Linear prediction: a tutorial review", Proc. IEEE 63 (1975)
// 561-580.

#pragma once

#include <span>
#include <vector>

namespace tarquil {

// r_k = sum over i of powers[i] cos(k pi (i + 1/2) / n), the autocorrelation of a sound whose power
// spectrum is known at n places that lie evenly on the frequency axis, which may be a bent one.
std::vector<double> autocorrelation_of_spectrum(std::span<const double> powers, size_t order);

// Widens every peak of the spectrum by a Gaussian whose standard deviation is `width` (a fraction
// of pi), which keeps the poles from ringing, and adds `floor` times the power as white noise.
// Source: Y. Tohkura, F. Itakura and S. Hashimoto, "Spectral smoothing technique in PARCOR speech
// analysis-synthesis", IEEE Trans. ASSP 26 (1978) 587-596.
void smooth_spectrum(std::span<double> autocorrelation, double width, double floor);

struct Prediction {
    std::vector<double> predictor; // a_0 = 1, a_1, ...
    double error = 0.0;            // the power that is left, 0 for silence
};

// The Levinson-Durbin recursion.  Silence gives a_1 = a_2 = ... = 0.
Prediction predict(std::span<const double> autocorrelation);

} // namespace tarquil
