// The power spectrum of a stretch of sound.

#include "softsynth/lpc/power_spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <utility>

#include "softsynth/lpc/exact_math.h"

namespace tarquil {

namespace {

constexpr size_t WINDOW_LENGTH = 2 * SPEECH_FRAME_SAMPLES;
static_assert(WINDOW_LENGTH <= SPECTRUM_LENGTH);

// Of pairs of samples.
constexpr size_t HALF_LENGTH = SPECTRUM_LENGTH / 2;
using Spectrum = std::array<std::complex<double>, HALF_LENGTH>;

// Without the special cases of the standard's.
std::complex<double> product(std::complex<double> a, std::complex<double> b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// e^(-2 pi i / SPECTRUM_LENGTH) to the power of its index.
const Spectrum& unit_roots() {
    static const Spectrum roots = [] {
        Spectrum table;
        for (size_t i = 0; i < HALF_LENGTH; i++) {
            const double half_turns = double(i) / double(HALF_LENGTH);
            table[i] = {cos_half_turns(half_turns), -sin_half_turns(half_turns)};
        }
        return table;
    }();
    return roots;
}

std::array<double, WINDOW_LENGTH> make_window() {
    std::array<double, WINDOW_LENGTH> window{};
    // sin^4 is 3/8 on average.
    const double scale = 1.0 / std::sqrt(0.375 * double(WINDOW_LENGTH));
    for (size_t i = 0; i < WINDOW_LENGTH; i++) {
        const double sine = sin_half_turns((double(i) + 0.5) / double(WINDOW_LENGTH));
        window[i] = scale * sine * sine;
    }
    return window;
}

// In place, decimation in time: J. W. Cooley and J. W. Tukey, "An algorithm for the machine
// calculation of complex Fourier series", Math. Comp. 19 (1965) 297-301.
void transform(Spectrum& x) {
    const auto& roots = unit_roots();
    for (size_t i = 1, reversed = 0; i < HALF_LENGTH; i++) {
        size_t bit = HALF_LENGTH / 2;
        for (; (reversed & bit) != 0; bit /= 2)
            reversed ^= bit;
        reversed ^= bit;
        if (i < reversed)
            std::swap(x[i], x[reversed]);
    }
    for (size_t half = 1; half < HALF_LENGTH; half *= 2) {
        const size_t stride = HALF_LENGTH / half;
        for (size_t start = 0; start < HALF_LENGTH; start += 2 * half) {
            for (size_t i = start; i < start + half; i++) {
                const std::complex<double> turned =
                    product(roots[(i - start) * stride], x[i + half]);
                x[i + half] = x[i] - turned;
                x[i] += turned;
            }
        }
    }
}

} // namespace

PowerSpectrum power_spectrum(std::span<const float> samples, size_t frame) {
    static const auto window = make_window();
    std::array<double, SPECTRUM_LENGTH> x{};
    const long start = (long(frame) * 2 - 1) * long(SPEECH_FRAME_SAMPLES / 2);
    const long first = std::max(0L, -start);
    const long last = std::min(long(WINDOW_LENGTH), long(samples.size()) - start);
    for (long i = first; i < last; i++)
        x[size_t(i)] = window[size_t(i)] * double(samples[size_t(start + i)]);
    Spectrum pairs;
    for (size_t i = 0; i < HALF_LENGTH; i++)
        pairs[i] = {x[2 * i], x[2 * i + 1]};
    transform(pairs);
    // What was real and what was imaginary are the even and the odd part.
    PowerSpectrum powers{};
    for (size_t i = 0; i <= HALF_LENGTH; i++) {
        const std::complex<double> here = pairs[i % HALF_LENGTH];
        const std::complex<double> mirrored = std::conj(pairs[(HALF_LENGTH - i) % HALF_LENGTH]);
        const std::complex<double> even = 0.5 * (here + mirrored);
        const std::complex<double> odd = 0.5 * (here - mirrored); // times i
        const std::complex<double> root = i < HALF_LENGTH ? unit_roots()[i] : -1.0;
        powers[i] = std::norm(even + product(std::complex<double>(0.0, -1.0), product(root, odd)));
    }
    return powers;
}

} // namespace tarquil
