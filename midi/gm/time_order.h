// The order of absolute sample times, which wrap round after 27 hours.

#pragma once

#include <cstdint>
#include <optional>

namespace tarquil {

inline bool is_before(uint32_t a, uint32_t b) {
    return int32_t(a - b) < 0;
}

// When something scheduled is to happen; none: nothing is scheduled.
using DueTime = std::optional<uint32_t>;

inline DueTime earlier(DueTime a, DueTime b) {
    if (!a)
        return b;
    return b && is_before(*b, *a) ? b : a;
}

} // namespace tarquil
