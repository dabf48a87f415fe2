// The curve of most effect settings.

#pragma once

// Times, levels and frequencies grow with the cube of a setting, which spreads them evenly to the
// ear.
inline float cubed(float x) {
    return x * x * x;
}
