// The outline of a voice's spectrum.

#include "softsynth/lpc/spectral_envelope.h"

#include <algorithm>
#include <cmath>

#include "softsynth/lpc/exact_math.h"
#include "softsynth/lpc/speech.h"

namespace tarquil {

namespace {

constexpr double LIMIT_STEP_HZ = 100.0;
constexpr unsigned NO_LIMIT = 200;
constexpr unsigned LOWEST_LIMIT = 30;
// What lies 60 dB below the densest place counts as empty.
constexpr double EMPTY = 1e-6;
// A fall by 15 dB over 400 Hz is the filter of a converter, not of a mouth.
constexpr unsigned CLIFF_STEPS = 4;
constexpr double CLIFF = 0.03;

// An average over less does not help: the window is no finer.
constexpr double NARROWEST_HZ = 100.0;

// Below what 16 bits can hold.
constexpr double LOWEST_DENSITY = 1e-11;

} // namespace

double emphasis_at(double hz) {
    const double e = double(EMPHASIS);
    return 1.0 + e * e - 2.0 * e * cos_half_turns(2.0 * hz / SAMPLE_RATE);
}

double average_density(const PowerSpectrum& spectrum, double hz, double reach_hz) {
    const auto first = std::max(1L, long(std::ceil((hz - reach_hz) / SPECTRUM_BIN_HZ)));
    const auto last =
        std::min(long(spectrum.size()) - 1, long(std::floor((hz + reach_hz) / SPECTRUM_BIN_HZ)));
    double sum = 0.0;
    double weights = 0.0;
    for (long bin = first; bin <= last; bin++) {
        const double distance = std::fabs(double(bin) * SPECTRUM_BIN_HZ - hz) / reach_hz;
        const double weight = 1.0 + cos_half_turns(std::min(distance, 1.0));
        sum += weight * spectrum[size_t(bin)];
        weights += weight;
    }
    return sum / weights;
}

uint8_t find_band_limit(const PowerSpectrum& sum) {
    std::array<double, NO_LIMIT> density{};
    for (size_t bin = 1; bin < sum.size(); bin++) {
        const double hz = double(bin) * SPECTRUM_BIN_HZ;
        const auto step = size_t(hz / LIMIT_STEP_HZ);
        if (step < NO_LIMIT)
            density[step] = std::max(density[step], sum[bin] * emphasis_at(hz));
    }
    const double empty = EMPTY * *std::max_element(density.begin(), density.end());
    unsigned limit = NO_LIMIT;
    while (limit > LOWEST_LIMIT && density[limit - 1] <= empty)
        limit--;
    while (limit < NO_LIMIT && limit > LOWEST_LIMIT &&
           density[limit - 1] < CLIFF * density[limit - 1 - CLIFF_STEPS])
        limit--;
    return uint8_t(limit);
}

EnvelopeFinder::EnvelopeFinder(double warping, double band_limit_hz) {
    for (size_t i = 0; i < ENVELOPE_POINTS; i++) {
        const double bent = PI * (double(i) + 0.5) / double(ENVELOPE_POINTS);
        const double angle =
            bent - 2.0 * std::atan(warping * std::sin(bent) / (1.0 + warping * std::cos(bent)));
        points[i].hz = angle * SAMPLE_RATE / (2.0 * PI);
        points[i].emphasis = emphasis_at(points[i].hz);
        if (points[i].hz < band_limit_hz)
            num_points = i + 1;
    }
}

Envelope EnvelopeFinder::find(const PowerSpectrum& spectrum, double pitch_hz) const {
    const double reach_hz = std::max(pitch_hz, NARROWEST_HZ);
    Envelope envelope{};
    for (size_t i = 0; i < num_points; i++)
        envelope[i] = points[i].emphasis *
                      (average_density(spectrum, points[i].hz, reach_hz) + LOWEST_DENSITY);
    std::fill(envelope.begin() + long(num_points), envelope.end(), envelope[num_points - 1]);
    return envelope;
}

} // namespace tarquil
