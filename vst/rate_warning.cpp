// What a host's sample rate does to a plug-in that plays at one rate only.

#include "vst/rate_warning.h"

#include <cmath>

#include "common/number_text.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

std::string rate_warning(double rate) {
    constexpr double LARGEST_ERROR = 0.1; // Hz
    constexpr double CENTS = 1200.0;      // in an octave
    if (!std::isfinite(rate) || rate <= 0.0 || std::abs(rate - SAMPLE_RATE) <= LARGEST_ERROR)
        return "";
    const double ratio = rate / SAMPLE_RATE;
    const bool is_sharp = ratio > 1.0;
    return "At this host's " + fixed_number(rate, 0) + " Hz the VST 2 plug-in plays " +
           fixed_number(CENTS * std::abs(std::log2(ratio)), 0) + " cents " +
           (is_sharp ? "sharp and " : "flat and ") +
           fixed_number(100.0 * std::abs(ratio - 1.0), 0) +
           (is_sharp ? " % too fast." : " % too slowly.") +
           " In tune: 44100 Hz, or Tarquil as CLAP, VST 3 or LV2.";
}

} // namespace tarquil
