// A byte that is being dragged: keeps the fraction that single movements leave.

#pragma once

#include <algorithm>
#include <cmath>

#include "editor/kit/widget.h"

namespace tarquil {

// How much slower a drag is with the shift key held.
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

} // namespace tarquil
