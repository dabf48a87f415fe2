// Line spectral pairs, predictors and reflection coefficients.

#include "softsynth/lpc/line_spectrum.h"

#include <algorithm>

#include "softsynth/lpc/exact_math.h"

namespace tarquil {

namespace {

constexpr size_t NUM_PAIRS = LPC_ORDER / 2;

constexpr double MAX_REFLECTION = 1.0 - 1e-9;

// Where the search looks for changes of sign: closer lines than a byte can tell apart are not lost.
constexpr int GRID = 1024;
constexpr int NUM_BISECTIONS = 20;

// P without its zero at -1, Q without that at 1: symmetric, so these are the first half.
using HalfPolynomial = std::array<double, NUM_PAIRS + 1>;

using FullPolynomial = std::array<double, LPC_ORDER + 1>;

// The product of (1 - 2 cos w z^-1 + z^-2) over every second line from `first` on.
FullPolynomial product_of_pairs(const LineCosines& cosines, size_t first) {
    FullPolynomial product{1.0};
    for (size_t i = first; i < LPC_ORDER; i += 2) {
        const size_t degree = i + 2 - first;
        for (size_t m = degree; m >= 2; m--)
            product[m] += product[m - 2] - 2.0 * cosines[i] * product[m - 1];
        product[1] -= 2.0 * cosines[i];
    }
    return product;
}

// On the unit circle a symmetric polynomial is, but for its delay, the series
// 2 (T_n(x) + c_1 T_(n-1)(x) + ... + c_n / 2), x = cos w, here by Clenshaw's recurrence.
double chebyshev_series(const HalfPolynomial& coefs, double x) {
    double b1 = 0.0;
    double b2 = 0.0;
    for (size_t i = 0; i < NUM_PAIRS; i++) {
        const double b0 = coefs[i] + 2.0 * x * b1 - b2;
        b2 = b1;
        b1 = b0;
    }
    return x * b1 - b2 + coefs[NUM_PAIRS] / 2.0;
}

double find_zero(const HalfPolynomial& coefs, double right, double left) {
    const bool is_right_negative = chebyshev_series(coefs, right) < 0.0;
    for (int i = 0; i < NUM_BISECTIONS; i++) {
        const double middle = (left + right) / 2.0;
        if ((chebyshev_series(coefs, middle) < 0.0) == is_right_negative)
            right = middle;
        else
            left = middle;
    }
    return (left + right) / 2.0;
}

} // namespace

Predictor predictor_of_lines(const LineCosines& cosines) {
    const FullPolynomial odd = product_of_pairs(cosines, 0);
    const FullPolynomial even = product_of_pairs(cosines, 1);
    Predictor predictor{1.0};
    for (size_t m = 1; m <= LPC_ORDER; m++)
        predictor[m] = (odd[m] + odd[m - 1] + even[m] - even[m - 1]) / 2.0;
    return predictor;
}

// On the unit circle P and Q are at right angles, so that |A|^2 = (|P|^2 + |Q|^2) / 4, and
// |P|^2 = 2 (1 + x) prod (2 x - 2 cos w_i)^2.
double predictor_power(const LineCosines& cosines, double x) {
    double p = 1.0;
    double q = 1.0;
    for (size_t i = 0; i < LPC_ORDER; i += 2) {
        p *= 2.0 * (x - cosines[i]);
        q *= 2.0 * (x - cosines[i + 1]);
    }
    return 0.5 * ((1.0 + x) * p * p + (1.0 - x) * q * q);
}

std::optional<LineCosines> lines_of_predictor(const Predictor& predictor) {
    HalfPolynomial halves[2] = {{1.0}, {1.0}};
    for (size_t m = 1; m <= NUM_PAIRS; m++) {
        const double mirrored = predictor[LPC_ORDER + 1 - m];
        halves[0][m] = predictor[m] + mirrored - halves[0][m - 1];
        halves[1][m] = predictor[m] - mirrored + halves[1][m - 1];
    }
    LineCosines cosines{};
    size_t found = 0;
    double right = 1.0;
    for (int i = 1; i <= GRID && found < LPC_ORDER; i++) {
        const double left = cos_half_turns(double(i) / GRID);
        // The next line is of the other polynomial; both may lie within one step.
        while (found < LPC_ORDER) {
            const HalfPolynomial& half = halves[found % 2];
            if ((chebyshev_series(half, right) < 0.0) == (chebyshev_series(half, left) < 0.0))
                break;
            cosines[found] = find_zero(half, right, left);
            right = cosines[found];
            found++;
        }
        right = left;
    }
    if (found < LPC_ORDER)
        return std::nullopt;
    return cosines;
}

Reflections reflections_of_predictor(const Predictor& predictor) {
    Predictor a = predictor;
    Reflections k{};
    for (size_t m = LPC_ORDER; m >= 1; m--) {
        k[m - 1] = std::clamp(a[m], -MAX_REFLECTION, MAX_REFLECTION);
        const double scale = 1.0 / (1.0 - k[m - 1] * k[m - 1]);
        const Predictor higher = a;
        for (size_t i = 1; i < m; i++)
            a[i] = (higher[i] - k[m - 1] * higher[m - i]) * scale;
    }
    return k;
}

} // namespace tarquil
