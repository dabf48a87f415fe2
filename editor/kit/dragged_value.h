// A byte that is being dragged or turned: keeps the fractions that single movements leave.

#pragma once

#include <algorithm>
#include <cmath>

#include "editor/kit/widget.h"

namespace tarquil {

// How much slower a drag, or the wheel, is with the shift key held.
inline double drag_speed(const Pointer& pointer) {
    constexpr double FINE = 0.1;
    return pointer.shift ? FINE : 1.0;
}

class DraggedValue {
  public:
    void start(int byte) { value = byte; }

    // The byte after a movement by `steps`, within first..last.
    int move(double steps, int first = 0, int last = 127) {
        value = std::clamp(value + steps, double(first), double(last));
        return int(std::lround(value));
    }

  private:
    double value = 0.0;
};

class WheelSteps {
  public:
    // The whole steps that are due after the wheel has turned by `notches` of `size` steps each.
    int turn(const Pointer& pointer, double notches, double size) {
        rest += notches * size * drag_speed(pointer);
        const double whole = std::trunc(rest + std::copysign(ROUNDING, rest));
        rest -= whole;
        return int(whole);
    }

  private:
    static constexpr double ROUNDING = 1e-9; // ten tenths are one
    double rest = 0.0;
};

} // namespace tarquil
