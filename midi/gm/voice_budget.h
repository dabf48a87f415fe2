// How many of an engine's voices are in use, reckoned from what it was told.

#pragma once

#include <array>
#include <cstdint>

#include "midi/gm/time_order.h"

namespace tarquil {

class VoiceBudget {
  public:
    // From here on one note that a pedal holds is released for each new one, then two: a released
    // note keeps its voice a while, and an engine without a free voice drops new notes.
    static constexpr unsigned SCARCE = 76;
    static constexpr unsigned VERY_SCARCE = 86;

    void clear() { held = num_tails = 0; }
    void add_note() { held++; }

    // A note has been released and fades until `end`.
    void release_note(uint32_t time, uint32_t end);

    // Voices that sound at `time`.
    unsigned count(uint32_t time);

    void move_clock_back(uint32_t frames);

  private:
    static constexpr unsigned MAX_TAILS = 96;

    void drop_ended(uint32_t time);

    unsigned held = 0;
    unsigned num_tails = 0;
    std::array<uint32_t, MAX_TAILS> tail_ends{};
};

} // namespace tarquil
