// What the display says about sizes.

#pragma once

namespace tarquil {

struct DisplayScale {
    double usual = 1.0;    // of what is shown on it
    double largest = 16.0; // at which the window fits on it
};

// Of X's resource Xft.dpi, else of GDK_SCALE, for a window of this height in the editor's units. As
// above without a display.
DisplayScale read_display_scale(double height);

// The parts, for texts that may be missing (null) or nonsense: 0 then.
double scale_of_dpi(const char* dpi);
double scale_of_factor(const char* factor);

} // namespace tarquil
