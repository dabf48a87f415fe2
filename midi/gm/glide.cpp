// A level that moves to a new byte without a click.

#include "midi/gm/glide.h"

#include <array>
#include <cmath>
#include <numbers>

namespace tarquil {

namespace {

// The part of the way that is covered at each step.
const auto WAY = [] {
    std::array<double, Glide::LENGTH + 1> parts{};
    for (uint32_t i = 0; i <= Glide::LENGTH; i++)
        parts[i] = 0.5 - 0.5 * std::cos(std::numbers::pi * i / Glide::LENGTH);
    return parts;
}();

} // namespace

void Glide::start(uint32_t now, uint8_t from, uint8_t to) {
    start_time = now;
    first = from;
    last = to;
    find_step(1, from);
}

uint8_t Glide::take_step() {
    const uint8_t value = byte_at(next_step);
    find_step(next_step + 1, value);
    return value;
}

uint8_t Glide::byte_at(uint32_t step) const {
    return uint8_t(std::lround(first + (double(last) - first) * WAY[step]));
}

void Glide::find_step(uint32_t first_step, uint8_t current) {
    for (next_step = first_step; next_step <= LENGTH; next_step++)
        if (byte_at(next_step) != current)
            return;
    next_step = DONE;
}

} // namespace tarquil
