// Runs that are put down first and done later, so that a player's engines can do them at the same
// time.

#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "midi/gm/engine_events.h"
#include "softsynth/core/staged_block.h"
#include "softsynth/parameters/midi_event.h"
#include "softsynth/parameters/tempo.h"

namespace tarquil {

class DeferredRuns {
  public:
    struct Run {
        uint32_t time = 0; // absolute, in samples, of its start
        uint32_t frames = 0;
        Tempo tempo;
        std::array<uint32_t, NUM_GM_ENGINES> num_events{};
        uint32_t moved_back = 0; // the clock, behind the run
    };

    void clear();

    // Puts a run down; what follows belongs to it.  In General MIDI the native engine's place is
    // the melodic one's.
    void add_run(uint32_t time, uint32_t frames, const Tempo& tempo);
    void add_events(unsigned engine, std::span<const midi_event> events);
    void move_clock_back(uint32_t frames) { runs.back().moved_back = frames; }

    [[nodiscard]] std::span<const Run> get_runs() const { return runs; }

    // An engine's sound of all runs, one after the other, interleaved.
    [[nodiscard]] float* sound(unsigned engine) { return sounds[engine].data(); }
    // Whether the drums have made any in run `run`; otherwise their sound is not defined.
    [[nodiscard]] bool are_drums_heard(size_t run) const { return drums_heard[run] != 0; }
    void set_drums_heard(size_t run, bool is_heard) { drums_heard[run] = uint8_t(is_heard); }
    // The native or melodic engine's, in run `run`.
    [[nodiscard]] StagedBlock& block(size_t run) { return blocks[run]; }

    // Calls act(index of a run, the run, its events, its sound) for each run, in order.
    template <typename Act> void for_each_run(unsigned engine, const Act& act) {
        float* pcm = sound(engine);
        const midi_event* next = events_of[engine].data();
        for (size_t i = 0; i < runs.size(); i++) {
            const uint32_t count = runs[i].num_events[engine];
            act(i, runs[i], std::span(next, count), pcm);
            next += count;
            pcm += size_t(2) * runs[i].frames;
        }
    }

  private:
    // An engine must not be handed a null pointer.
    static constexpr size_t ROOM_FOR_EVENTS = 1024;

    std::vector<Run> runs;
    std::array<std::vector<midi_event>, NUM_GM_ENGINES> events_of;
    std::array<std::vector<float>, NUM_GM_ENGINES> sounds;
    std::vector<uint8_t> drums_heard;
    std::vector<StagedBlock> blocks; // at least as many as there are runs; they keep their memory
};

} // namespace tarquil
