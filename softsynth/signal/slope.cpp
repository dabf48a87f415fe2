// A straight line in floats, as adding one step after the other rounds it.
//
// Each sum would wait for the one before.  But floats of one exponent are multiples of the same
// unit in the last place, and to add a step to any of them rounds to the same multiple, unless the
// step lies just between two (then the even neighbour is taken, which is now the one and now the
// other). So all samples up to the next exponent are the first one plus a whole number of equal
// steps, and those sums and products are exact.

#include "softsynth/signal/slope.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace tarquil {

namespace {

constexpr unsigned MANTISSA_BITS = 23;
constexpr uint32_t INFINITE_EXPONENT = 255;

// Of a positive float, with a bias of 127; more for a negative one.
uint32_t exponent_of(float value) {
    return std::bit_cast<uint32_t>(value) >> MANTISSA_BITS;
}

// Whether every sum from `first` to `last` moves by `moved`, as the first one does.
bool moves_evenly(float first, float last, float step, float moved) {
    const uint32_t exponent = exponent_of(first);
    if (exponent != exponent_of(last) || exponent >= INFINITE_EXPONENT ||
        exponent <= MANTISSA_BITS + 1) // units in the last place must not be flushed to 0
        return false;
    const auto half_unit = std::bit_cast<float>((exponent - MANTISSA_BITS - 1) << MANTISSA_BITS);
    return std::fabs(double(moved) - double(step)) < double(half_unit);
}

} // namespace

void render_slope(float* out, uint32_t count, float value, float step) {
    constexpr uint32_t PIECE = 16;
    uint32_t length = count; // the whole line often has one exponent
    while (count > 0) {
        const float moved = (value + step) - value;
        const float last = value + float(length) * moved;
        if (moves_evenly(value, last, step, moved)) {
            for (uint32_t i = 0; i < length; i++)
                out[i] = value + float(int32_t(i)) * moved;
            value = last;
        } else if (length > PIECE) {
            length = PIECE;
            continue;
        } else {
            for (uint32_t i = 0; i < length; i++) {
                out[i] = value;
                value += step;
            }
        }
        out += length;
        count -= length;
        length = std::min(count, PIECE);
    }
}

} // namespace tarquil
