// What passes between a player's control side and its audio side, neither of which waits for the
// other.

#pragma once

#include <atomic>
#include <cstdint>

#include "common/spsc_queue.h"
#include "player/bank_bytes.h"
#include "player/meters.h"
#include "softsynth/core/core.h"

namespace tarquil {

// The next time that the audio side renders.
inline constexpr uint32_t PLAY_NOW = UINT32_MAX;

// What the audio side is told; the bank's bytes themselves have been changed before.
struct PlayerEdit {
    enum class Kind : uint8_t {
        BYTE,            // controller `number` of `program` (or a global one) became `value`
        BEND,            // the pitch bend of `program` became `value` (coarse) and `fine`
        CHANNEL_PROGRAM, // channel `number` plays `program` from `time` on
        REFRESH,         // the bank is sent as a whole, the next one if there is one
        RELEASE_NOTES,   // of all channels
        MESSAGE,         // the MIDI message `program`, `number`, `value` is played
    };

    Kind kind = Kind::REFRESH;
    uint8_t program = 0;
    uint8_t number = 0;
    uint8_t value = 0;
    uint8_t fine = 0;
    uint32_t time = PLAY_NOW; // absolute sample time
};

struct PlayerLink {
    // Some hosts set every parameter of several programs between two blocks.
    SpscQueue<PlayerEdit, 4096> edits;
    // An edit found no room: the bank is to be sent as a whole.
    std::atomic<bool> edits_lost{false};
    // The bank that takes the place of the audio side's at the next refresh, and those that it has
    // replaced, to be freed elsewhere: two at most, since each new one frees those before.
    std::atomic<BankBytes*> next_bank{nullptr};
    SpscQueue<BankBytes*, 4> retired_banks;

    std::atomic<Tarquil*> engine{nullptr}; // null until it is made
    // What each channel plays: as asked for last, by either side.
    std::atomic<uint8_t> channel_programs[NUM_CHANNELS]{};
    // The program that hosts and editors work on.
    std::atomic<unsigned> edited_program{0};
    // Counts what an editor or a host would show anew.
    std::atomic<uint32_t> changes{0};

    Meters meters;

    void note_change() { changes.fetch_add(1, std::memory_order_relaxed); }
};

} // namespace tarquil
