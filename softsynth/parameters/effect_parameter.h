// How effects turn their parameters, bytes 0..127, into quantities.

#pragma once

namespace tarquil {

// The part `p` / 127 of `range`.
inline float part_of(float range, int p) {
    return float(p) * range / 127.0F;
}

// Times, levels and frequencies grow with the cube of a setting, which spreads them evenly to the
// ear.
inline float cubed(float x) {
    return x * x * x;
}

} // namespace tarquil
