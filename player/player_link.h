// What passes between a player's control side and its audio side, neither of which waits for the
// other.

#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>

#include "common/spsc_queue.h"
#include "player/audition.h"
#include "player/bank_bytes.h"
#include "player/channel_programs.h"
#include "player/gm_ensemble.h"
#include "player/handover.h"
#include "player/learned_table.h"
#include "player/meters.h"
#include "player/moved_controls.h"
#include "player/sounding_keys.h"
#include "softsynth/core/core.h"
#include "softsynth/parameters/midi_dialect.h"

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
        SILENCE,         // of all that sounds, echoes included
        MESSAGE,         // the MIDI message `program`, `number`, `value` is played
        STRIKE_AGAIN,    // keys that are down on channels that play `program` are struck again
    };

    Kind kind = Kind::REFRESH;
    uint8_t program = 0;
    uint8_t number = 0;
    uint8_t value = 0;
    uint8_t fine = 0;
    uint32_t time = PLAY_NOW; // absolute sample time
};

struct PlayerLink {
    explicit PlayerLink(const TarqSettings& first_bank)
        : bank(std::make_unique<BankBytes>(first_bank)), gm_set(std::make_shared<const GmSet>()),
          audition(std::make_unique<const AuditionRequest>()) {
        const ChannelPrograms usual = usual_channel_programs(MidiDialect::NATIVE);
        std::copy(usual.begin(), usual.end(), channel_programs);
    }

    // Some hosts set every parameter of several programs between two blocks.
    SpscQueue<PlayerEdit, 4096> edits;
    // An edit found no room: the bank is to be sent as a whole.
    std::atomic<bool> edits_lost{false};
    // A message found no room: it may have been the end of a note.
    std::atomic<bool> messages_lost{false};
    Handover<std::unique_ptr<BankBytes>> bank; // taken at a refresh
    Handover<std::shared_ptr<const GmSet>> gm_set;
    Handover<std::unique_ptr<const AuditionRequest>> audition;

    std::atomic<Tarquil*> engine{nullptr}; // null until it is made, as are:
    std::atomic<Tarquil*> drum_engine{nullptr};
    std::atomic<Tarquil*> audition_engine{nullptr};
    std::atomic<GmEnsemble*> ensemble{nullptr};
    // As asked for last; the ensemble is made before it is General MIDI.
    std::atomic<MidiDialect> dialect{MidiDialect::NATIVE};
    // As the bank says.
    std::atomic<bool> tempo_sync{false};
    // What the bank's MIDI controllers have been taught.
    LearnedTable learned;
    MovedControls moved;
    // What each channel plays: as asked for last, by either side.
    std::atomic<uint8_t> channel_programs[NUM_CHANNELS]{};
    // The program that hosts and editors work on.
    std::atomic<unsigned> edited_program{0};
    // The channel that is selected in a window.
    std::atomic<unsigned> selected_channel{0};
    // Counts what an editor or a host would show anew.
    std::atomic<uint32_t> changes{0};

    // The programs that bear the names that the set's laws and its guests' are for, by bits.
    using ProgramBits = std::atomic<uint64_t>[MAX_INSTRUMENTS / 64];
    ProgramBits lawful = {UINT64_MAX, UINT64_MAX};
    ProgramBits lawful_guests{};

    Meters meters;
    SoundingKeys keys;

    void note_change() { changes.fetch_add(1, std::memory_order_relaxed); }
};

} // namespace tarquil
