// Lines moved until the filter's spectrum is as near to an envelope as bytes can bring it.
//
// Linear prediction fits the peaks of a spectrum and lets the valleys be; the ear, and whoever
// compares spectra, hears levels in decibels.  From the predictor's lines on, one line at a time is
// moved by ever smaller steps as long as the squared difference of the two spectra in decibels gets
// smaller: coordinate descent, own design.  As the lines are bytes all the while, it also takes
// back most of what rounding them costs.

#pragma once

#include <array>

#include "softsynth/lpc/spectral_envelope.h"
#include "softsynth/lpc/speech_frame.h"

namespace tarquil {

struct Fit {
    std::array<uint8_t, LPC_ORDER> lines{};
    double amplitude = 0.0;   // the level that brings both spectra to the same average in decibels
    double distance_db = 0.0; // root mean square difference then
};

// Compares the first `num_points` points.  `lines` as separate_lines leaves them.
Fit measure_fit(const std::array<uint8_t, LPC_ORDER>& lines, const Envelope& envelope,
                size_t num_points);
Fit refine_lines(const std::array<uint8_t, LPC_ORDER>& lines, const Envelope& envelope,
                 size_t num_points);

} // namespace tarquil
