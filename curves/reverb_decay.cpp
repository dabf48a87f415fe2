// How long the reverb rings at a frequency.

#include "curves/reverb_decay.h"

#include <cmath>
#include <complex>
#include <numbers>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/reverb/revmodel.h"

namespace tarquil {

// The longest comb rings longest: each turn takes its delay, and multiplies by the feedback and by
// the gain of the low-pass y = (1 - d) x + d y[n - 1] in its loop.
double reverb_decay_seconds(const ControllerBytes& bytes, double hertz) {
    const auto mapped = [&](unsigned number) { return map_char_to_float(number, bytes[number]); };
    const auto damping = double(revmodel::comb_damping(mapped(CTRL_REVERB_DAMP)));
    const auto feedback = double(revmodel::comb_feedback(mapped(CTRL_REVERB_ROOMSIZE)));
    const double omega = 2.0 * std::numbers::pi * hertz / SAMPLE_RATE;
    const double gain =
        feedback * (1.0 - damping) / std::abs(1.0 - damping * std::polar(1.0, -omega));
    return double(revmodel::LONGEST_COMB) / SAMPLE_RATE * std::log(0.001) / std::log(gain);
}

} // namespace tarquil
