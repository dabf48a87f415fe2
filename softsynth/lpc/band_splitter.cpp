// A signal split in two at a frequency.

#include "softsynth/lpc/band_splitter.h"

#include "softsynth/lpc/exact_math.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr double SQRT_2 = 1.4142135623730951;

} // namespace

void BandSplitter::set_frequency(double hz) {
    const double t = tan_half_turns(hz / double(SAMPLE_RATE));
    const double scale = 1.0 / (1.0 + SQRT_2 * t + t * t);
    b_low = float(t * t * scale);
    b_high = float(scale);
    a1 = float(2.0 * (t * t - 1.0) * scale);
    a2 = float((1.0 - SQRT_2 * t + t * t) * scale);
}

} // namespace tarquil
