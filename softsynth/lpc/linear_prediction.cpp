// Linear prediction.

#include "softsynth/lpc/linear_prediction.h"

#include <algorithm>
#include <cmath>

#include "softsynth/lpc/exact_math.h"

namespace tarquil {

std::vector<double> autocorrelation_of_spectrum(std::span<const double> powers, size_t order) {
    std::vector<double> sums(order + 1);
    for (size_t i = 0; i < powers.size(); i++) {
        // cos(k x) by the recurrence of the Chebyshev polynomials.
        const double cosine = cos_half_turns((double(i) + 0.5) / double(powers.size()));
        double before = cosine;
        double now = 1.0;
        for (double& sum : sums) {
            sum += powers[i] * now;
            const double next = 2.0 * cosine * now - before;
            before = now;
            now = next;
        }
    }
    return sums;
}

void smooth_spectrum(std::span<double> autocorrelation, double width, double floor) {
    for (size_t k = 1; k < autocorrelation.size(); k++) {
        const double x = PI * width * double(k);
        autocorrelation[k] *= std::exp(-0.5 * x * x);
    }
    autocorrelation[0] *= 1.0 + floor;
}

Prediction predict(std::span<const double> autocorrelation) {
    const size_t order = autocorrelation.size() - 1;
    Prediction prediction{std::vector<double>(order + 1), autocorrelation[0]};
    std::vector<double>& a = prediction.predictor;
    a[0] = 1.0;
    std::vector<double> shorter;
    for (size_t m = 1; m <= order && prediction.error > 0.0; m++) {
        double sum = 0.0;
        for (size_t i = 0; i < m; i++)
            sum += a[i] * autocorrelation[m - i];
        const double k = -sum / prediction.error;
        if (!(std::fabs(k) < 1.0)) // rounding has used up what was left to predict
            break;
        shorter = a;
        for (size_t i = 1; i <= m; i++)
            a[i] = shorter[i] + k * shorter[m - i];
        prediction.error *= 1.0 - k * k;
    }
    return prediction;
}

} // namespace tarquil
