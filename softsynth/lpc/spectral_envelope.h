// The outline of a voice's spectrum, at places that lie evenly on the synthesis filter's bent axis.

#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "softsynth/lpc/power_spectrum.h"

namespace tarquil {

inline constexpr size_t ENVELOPE_POINTS = 64;

// Power density at pi (i + 1/2) / ENVELOPE_POINTS of the bent axis, as the filter has to have it:
// with the emphasis.
using Envelope = std::array<double, ENVELOPE_POINTS>;

// The average of a spectrum under a raised cosine that reaches `reach_hz` to both sides: harmonics
// of that distance give the same at every place.
double average_density(const PowerSpectrum& spectrum, double hz, double reach_hz);

// The power gain of the emphasis.
double emphasis_at(double hz);

// Where an emphasised sound's spectrum ends, in 100 Hz, as Speech has it; from the sum of its
// frames' spectra.
uint8_t find_band_limit(const PowerSpectrum& sum);

class EnvelopeFinder {
  public:
    EnvelopeFinder(double warping, double band_limit_hz);

    // Averages over the distance of the harmonics of `pitch_hz`, so that the outline does not show
    // them.  Above the band limit the envelope goes on as it was: poles that had to follow the
    // cliff there would be missing below.
    [[nodiscard]] Envelope find(const PowerSpectrum& spectrum, double pitch_hz) const;

    // How many of the points, from the first on, lie below the band limit.
    [[nodiscard]] size_t get_num_points() const { return num_points; }

  private:
    struct Point {
        double hz = 0.0;
        double emphasis = 0.0; // the power gain of the emphasis there
    };
    std::array<Point, ENVELOPE_POINTS> points{};
    size_t num_points = 0;
};

} // namespace tarquil
