// The rhythm parts: drum kits on the second engine.
//
// Its sixteen channels are families of drums that share what all notes of a channel share.  Before
// each hit the controllers that differ are sent; its note-off is scheduled, or follows the key's
// for the long sounds.  Hits that exclude each other end by note-offs.

#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "midi/gm/engine_channel.h"
#include "midi/gm/gm_state.h"

namespace tarquil {

class RhythmParts {
  public:
    explicit RhythmParts(GmState& shared);

    // Nothing sounds, and nothing is known of the engine.
    void start();

    // False when the channel's kit has no sound for the key.
    bool note_on(uint32_t time, unsigned channel, unsigned key, unsigned velocity,
                 EngineEvents& out);
    // For the sounds that last as long as their key.
    void note_off(uint32_t time, unsigned channel, unsigned key, EngineEvents& out);
    void release_keys(uint32_t time, unsigned channel, EngineEvents& out);

    // Ends the channel's drums, or all, within a few milliseconds.
    void silence(uint32_t time, unsigned channel, EngineEvents& out);
    void silence_all(uint32_t time, EngineEvents& out);

    // Sends what has changed: of one channel or of all, after an edit of sounds.
    void update(uint32_t time, unsigned channel, std::span<const unsigned> controllers,
                EngineEvents& out);
    void update_all(uint32_t time, EngineEvents& out);

    [[nodiscard]] DueTime due() const;
    void run_due(uint32_t time, EngineEvents& out);

    void move_clock_back(uint32_t frames);

    // Hits whose note-off is still to come.
    [[nodiscard]] unsigned num_hits() const { return hit_count; }
    void add_held_keys(ChannelKeys& held) const;

  private:
    static constexpr unsigned MAX_HITS = 128;

    struct Hit {
        uint8_t channel = 0;
        uint8_t key = 0;
        uint8_t family = 0;
        uint8_t note = 0;
        bool is_timed = false;
        uint32_t end = 0;
    };

    struct Family {
        EngineChannel engine;
        bool is_used = false;
        uint8_t channel = 0; // of the last hit, as are:
        uint8_t instrument = 0;
        uint8_t pan = 0;
    };

    void prepare(uint32_t time, Family& family, unsigned key, unsigned velocity, EngineEvents& out);
    void schedule(uint32_t time, const Hit& hit, EngineEvents& out);
    void silence_family(uint32_t time, unsigned family_index, EngineEvents& out);

    // Ends the hits that `match`.
    template <typename Match> void end_hits(uint32_t time, const Match& match, EngineEvents& out);

    GmState& state;
    std::array<Family, MAX_FAMILIES> families;
    std::array<Hit, MAX_HITS> hits{};
    unsigned hit_count = 0;
};

} // namespace tarquil
