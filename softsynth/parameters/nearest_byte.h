// The byte that comes nearest to a wish.

#pragma once

#include <limits>

namespace tarquil {

// Of first..last the first one with the smallest distance(byte); `first` when none has a finite
// one.
template <typename Distance> int nearest_byte(int first, int last, const Distance& distance) {
    int nearest = first;
    double smallest = std::numeric_limits<double>::infinity();
    for (int byte = first; byte <= last; byte++) {
        const double d = distance(byte);
        if (d < smallest) {
            smallest = d;
            nearest = byte;
        }
    }
    return nearest;
}

} // namespace tarquil
