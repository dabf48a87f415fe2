// A level that moves to a new byte without a click.
//
// Along half a cosine in bytes, which the engine cubes: of straight lines, S-curves and curves in
// gain from 50 to 400 samples this leaves the least above 1.5 kHz, a jump of 49 bytes 28 dB less
// than a step.  Longer ones leave more, since a byte's steps then last.

#pragma once

#include <cstdint>

#include "midi/gm/time_order.h"

namespace tarquil {

class Glide {
  public:
    static constexpr uint32_t LENGTH = 96; // samples, 2.2 ms

    // Moves from `from` to `to`; the first step comes after `now`.
    void start(uint32_t now, uint8_t from, uint8_t to);
    void stop() { next_step = DONE; }

    [[nodiscard]] bool is_active() const { return next_step != DONE; }
    [[nodiscard]] DueTime due() const {
        return is_active() ? DueTime(start_time + next_step) : std::nullopt;
    }
    [[nodiscard]] uint8_t target() const { return last; }

    // The byte at due(); goes on to the next step.
    uint8_t take_step();

    void move_clock_back(uint32_t frames) { start_time -= frames; }

  private:
    static constexpr uint32_t DONE = 0;

    [[nodiscard]] uint8_t byte_at(uint32_t step) const;
    void find_step(uint32_t first_step, uint8_t current);

    uint32_t start_time = 0;
    uint32_t next_step = DONE; // 1..LENGTH, the next one with another byte
    uint8_t first = 0;
    uint8_t last = 0;
};

} // namespace tarquil
