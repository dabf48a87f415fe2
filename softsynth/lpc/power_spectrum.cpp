// The power spectrum of a stretch of sound.

#include "softsynth/lpc/power_spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <utility>

#include "common/assertion.h"
#include "softsynth/lpc/exact_math.h"

namespace tarquil {

namespace {

using Spectrum = std::array<std::complex<double>, SPECTRUM_LENGTH>;

// e^(-2 pi i / SPECTRUM_LENGTH) to the power of its index.
std::array<std::complex<double>, SPECTRUM_LENGTH / 2> make_roots() {
    std::array<std::complex<double>, SPECTRUM_LENGTH / 2> roots;
    for (size_t i = 0; i < roots.size(); i++) {
        const double turns = double(i) / double(SPECTRUM_LENGTH / 2);
        roots[i] = {cos_half_turns(turns), -sin_half_turns(turns)};
    }
    return roots;
}

// In place, decimation in time: J. W. Cooley and J. W. Tukey, "An algorithm for the machine
// calculation of complex Fourier series", Math. Comp. 19 (1965) 297-301.
void transform(Spectrum& x) {
    static const auto roots = make_roots();
    for (size_t i = 1, reversed = 0; i < SPECTRUM_LENGTH; i++) {
        size_t bit = SPECTRUM_LENGTH / 2;
        for (; (reversed & bit) != 0; bit /= 2)
            reversed ^= bit;
        reversed ^= bit;
        if (i < reversed)
            std::swap(x[i], x[reversed]);
    }
    for (size_t half = 1; half < SPECTRUM_LENGTH; half *= 2) {
        const size_t stride = SPECTRUM_LENGTH / 2 / half;
        for (size_t start = 0; start < SPECTRUM_LENGTH; start += 2 * half) {
            for (size_t i = start; i < start + half; i++) {
                const std::complex<double> root = roots[(i - start) * stride];
                const double real =
                    x[i + half].real() * root.real() - x[i + half].imag() * root.imag();
                const double imag =
                    x[i + half].real() * root.imag() + x[i + half].imag() * root.real();
                const std::complex<double> turned(real, imag);
                x[i + half] = x[i] - turned;
                x[i] += turned;
            }
        }
    }
}

} // namespace

PowerSpectrum power_spectrum(std::span<const float> samples, long centre, size_t window_length) {
    TARQ_ASSERT(window_length <= SPECTRUM_LENGTH);
    Spectrum x{};
    const long start = centre - long(window_length / 2);
    const long first = std::max(0L, -start);
    const long last = std::min(long(window_length), long(samples.size()) - start);
    // sin^4 is 3/8 on average.
    const double scale = 1.0 / std::sqrt(0.375 * double(window_length));
    for (long i = first; i < last; i++) {
        const double sine = sin_half_turns((double(i) + 0.5) / double(window_length));
        x[size_t(i)] = scale * sine * sine * double(samples[size_t(start + i)]);
    }
    transform(x);
    PowerSpectrum powers{};
    for (size_t i = 0; i < powers.size(); i++)
        powers[i] = std::norm(x[i]);
    return powers;
}

} // namespace tarquil
