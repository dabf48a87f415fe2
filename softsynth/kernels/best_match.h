// The search for the place that matches a stretch of sound best, as its kernel sees it.

#pragma once

#include <cstdint>

namespace tarquil {

// The kernel finds the start in [first, end) of `sound` whose next `length` samples have the
// largest sum of products with those of `stretch`, added in order; of equal ones the earliest.  At
// least one start; sums that are not numbers never win but the first.
struct MatchSearch {
    const float* stretch;
    uint32_t length;
    const float* sound;
    uint32_t first;
    uint32_t end;
};

} // namespace tarquil
