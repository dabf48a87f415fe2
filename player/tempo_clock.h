// The tempo and the place in the song at each run of a player, from what a host says now and then.
//
// Between two of a host's words, and while it stands, the song goes on at the last tempo.  So it
// does when the host says what was to be expected: how often it speaks, and in what blocks, changes
// nothing.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "player/host_tempo.h"
#include "softsynth/parameters/tempo.h"

namespace tarquil {

class TempoClock {
  public:
    static constexpr double FIRST_TEMPO = 120.0; // quarter notes a minute

    // The host says this of the absolute sample time `time`, in order.  False when there was
    // no room: the one that has waited longest is lost.
    bool add(const HostTempo& said, uint32_t time);
    [[nodiscard]] bool has_room() const { return count < ITEMS; }

    // What holds from the first sample of a run on that begins at `start`: what is said of a time
    // within the run holds from its start.  Goes on to its end.
    Tempo advance(uint32_t start, uint32_t frames);

    // Drops what is waiting.
    void clear() { count = 0; }
    void move_clock_back(uint32_t frames);

    // Now.
    [[nodiscard]] double quarters_per_minute() const { return tempo; }
    [[nodiscard]] const HostTempo::Place& place() const { return here; }

  private:
    struct Item {
        HostTempo said;
        uint32_t time = 0;
    };

    void take(const HostTempo& said, double samples_since);
    [[nodiscard]] double samples_per_quarter() const;

    static constexpr size_t ITEMS = 64;
    std::array<Item, ITEMS> items; // waiting, in order
    size_t count = 0;

    double tempo = FIRST_TEMPO;
    HostTempo::Place here;
};

} // namespace tarquil
