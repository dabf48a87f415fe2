// Cosines and powers made of additions and multiplications alone, and so the same on every machine,
// which the C library's are not.

#pragma once

#include <array>
#include <cstddef>

namespace tarquil {

inline constexpr double PI = 3.141592653589793;

namespace exact {

// The Taylor series of the cosine (`first` 1) or the sine (`first` x), within one unit in the last
// place for |x| <= pi / 4.
constexpr double trigonometric_series(double x, double first, int first_power) {
    constexpr int LAST_POWER = 18;
    double term = first;
    double sum = first;
    for (int power = first_power; power < LAST_POWER; power += 2) {
        term *= -x * x / double((power + 1) * (power + 2));
        sum += term;
    }
    return sum;
}

} // namespace exact

// cos(pi x), 0 <= x <= 1.
constexpr double cos_half_turns(double x) {
    if (x > 0.5)
        return -cos_half_turns(1.0 - x);
    if (x > 0.25) {
        const double angle = PI * (0.5 - x);
        return exact::trigonometric_series(angle, angle, 1);
    }
    return exact::trigonometric_series(PI * x, 1.0, 0);
}

// sin(pi x), 0 <= x <= 1.
constexpr double sin_half_turns(double x) {
    return x < 0.5 ? cos_half_turns(0.5 - x) : cos_half_turns(x - 0.5);
}

// tan(pi x), 0 <= x < 1/2.
constexpr double tan_half_turns(double x) {
    return sin_half_turns(x) / cos_half_turns(x);
}

// start, start ratio, start ratio^2, ...
template <size_t N> constexpr std::array<double, N> geometric_series(double start, double ratio) {
    std::array<double, N> terms{};
    for (double& term : terms) {
        term = start;
        start *= ratio;
    }
    return terms;
}

} // namespace tarquil
