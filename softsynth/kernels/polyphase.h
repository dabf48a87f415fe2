// Frames of a stereo sound between its samples, as their kernel sees them.

#pragma once

#include <cstdint>

namespace tarquil {

// Output i lies at input position p = whole_step * i + (phase + rest_step * i) / phases and is, for
// either side, the sum of num_taps inputs from `left` or `right` + floor(p) on, each times its tap
// of row r = fraction(p) * phases * rows_per_phase; if that is not whole, a tap is a + (r -
// floor(r)) * (b - a) of the rows floor(r) and floor(r) + 1 (`interpolated`; otherwise
// rows_per_phase is 1).
//
// SUMS partial sums, over the taps j, j + SUMS, j + 2 SUMS ... each in order, are added as
//
//   q[k] = (s[k] + s[k + 4]) + (s[k + 8] + s[k + 12]);   (q[0] + q[1]) + (q[2] + q[3])
struct Polyphase {
    static constexpr uint32_t SUMS = 16;

    const float* rows;
    uint32_t num_taps; // of a row: a multiple of SUMS
    bool interpolated;
    double rows_per_phase;

    uint32_t phase;
    uint32_t phases;
    uint32_t whole_step;
    uint32_t rest_step; // below `phases`

    const float* left;
    const float* right;
    float* out_left;
    float* out_right;
};

} // namespace tarquil
