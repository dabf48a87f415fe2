// From ticks to samples, without rounding on the way.

#pragma once

#include <cstdint>

namespace tarquil {

// The length of a tick: `weight / denominator` seconds.  `weight` is the tempo in microseconds per
// quarter note where the division counts ticks per quarter note, and fixed where it counts frames.
struct TickLength {
    uint64_t weight = 500000; // 120 quarter notes a minute, until a tempo event
    uint64_t denominator = 1;
    bool follows_tempo = true;
};

// Reads a division word; a denominator of 0 stands for one that means nothing.
TickLength tick_length(uint16_t division);

class SongClock {
  public:
    explicit SongClock(const TickLength& length) : tick(length) {}

    // Goes on to the tick `new_tick`, not before the last one.  False when that lies beyond
    // MAX_SONG_SECONDS.
    bool advance_to(uint64_t new_tick);

    // The length of a quarter note from here on, in microseconds, 1..2^24 - 1.
    void set_tempo(uint32_t microseconds);

    // The sample that sounds now, counted from the song's start.
    [[nodiscard]] uint32_t sample() const;

  private:
    TickLength tick;
    uint64_t current_tick = 0;
    uint64_t elapsed = 0; // in 1 / denominator seconds
};

} // namespace tarquil
