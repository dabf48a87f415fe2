// A player in the General MIDI dialect: one engine for the melodic parts, one for the drums, and
// the limiter that their sum meets.
//
// For the audio thread: after the constructor nothing is allocated.  The drums' engine is only run
// while drums sound.

#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <span>

#include "instrument/controller_bytes.h"
#include "midi/gm/gm_dialect.h"
#include "player/bank_bytes.h"
#include "player/channel_programs.h"
#include "player/deferred_runs.h"
#include "player/event_queue.h"
#include "player/gm_set.h"
#include "player/side_engine.h"
#include "softsynth/core/core.h"
#include "softsynth/effects/limiter.h"

namespace tarquil {

class GmEnsemble {
  public:
    // The longest run, frames: the dialect's events of one fit into the engines' queues.
    static constexpr uint32_t LONGEST_RUN = Limiter::PIECE;
    // Of each engine's output: peaks are the limiter's to hold, but a sound that runs away must not
    // turn the others down for long.
    static constexpr float ENGINE_BOUND = 4.0F; // 12 dB

    // Null: not there yet.
    struct Engines {
        Tarquil* melodic = nullptr;
        Tarquil* drums = nullptr;
    };

    GmEnsemble();

    // Takes the bank's bytes; before a begin, or a refresh for those that sound.
    void copy_bank(const BankBytes& bank);

    // Begins at `time`, perhaps again: the channels play these programs, all else is as after "GM
    // on".  Ends what the engines play.  The set stays until there is another.
    void begin(uint32_t time, const GmSet& new_set, const ChannelPrograms& channel_programs);
    // Others play the melodic engine from `time` on; the drums fade in run_rest.
    void end(uint32_t time);

    // Plays a record of gm_message, within the next run.  A status below 0x80 is an edit: of
    // program `status`, controller `data1` becomes `data2`.  False, and nothing happens, when there
    // is no room in this run.
    bool play(const midi_event& record);

    // For all below: less than the dialect's most events wait for the next run.
    [[nodiscard]] bool has_room() const { return queues->has_room(); }

    // Ends what sounds and plays another set; with room.
    void replace_set(uint32_t time, const GmSet& new_set);

    // An edit: heard on the parts that play the program, from `time` on.
    void set_byte(uint32_t time, unsigned program, unsigned number, uint8_t value);
    void refresh(uint32_t time);
    // Between two runs: what had no room.
    void refresh_if_waiting(uint32_t time) {
        if (refresh_waits)
            refresh(time);
    }

    // The programs that the set's laws hold for, and its guests' laws.
    void set_lawful(const std::bitset<GM_PROGRAMS>& lawful,
                    const std::bitset<GM_PROGRAMS>& guests) {
        dialect.set_lawful(lawful, guests);
    }

    void choose_program(unsigned channel, unsigned program) {
        dialect.choose_program(channel, program);
    }
    [[nodiscard]] unsigned program(unsigned channel) const {
        return dialect.channel(channel).program;
    }
    [[nodiscard]] const GmChannel& channel(unsigned index) const { return dialect.channel(index); }
    // The melodic engine's channels, by bit, that play a program.
    [[nodiscard]] uint32_t channels_of(unsigned program) const {
        return dialect.channels_of(program);
    }
    [[nodiscard]] ChannelKeys held_keys() const { return dialect.held_keys(); }

    // Ends everything, echoes included, within a few milliseconds.  False, and nothing happens,
    // when there is no room.
    bool panic(uint32_t time);

    // Renders `frames` (whole granules, at most LONGEST_RUN) that start at `time` into interleaved
    // stereo.
    void run(const Engines& engines, float* pcm, uint32_t frames, uint32_t time);

    // The same in steps: leaves the events of the run that `later` ends with, does all runs of the
    // drums (at the same time another thread may do the melodic engine's), adds them up.
    void defer(DeferredRuns& later);
    void perform_drums(DeferredRuns& later, Tarquil* engine);
    void mix(DeferredRuns& later, float* pcm);
    // After a run of one of the engines.
    void count_voices(unsigned index, const Tarquil& engine) {
        engine_voices[index] = unsigned(engine.num_voices());
        most_voices[index] = std::max(most_voices[index], engine_voices[index]);
    }

    // After the end: adds what is left to `frames` of any number, until nothing is.
    [[nodiscard]] bool has_rest() const { return is_ending; }
    void run_rest(Tarquil* drum_engine, float* pcm, uint32_t frames, uint32_t time);

    // Between two runs, before anything is played.
    void move_clock_back(uint32_t frames) { dialect.move_clock_back(frames); }

    [[nodiscard]] const GmReport& report() const { return dialect.report(); }
    [[nodiscard]] unsigned voices() const { return engine_voices[0] + engine_voices[1]; }
    // The most voices that one engine has sounded at once.
    [[nodiscard]] unsigned get_most_voices() const {
        return std::max(most_voices[MELODIC_ENGINE], most_voices[RHYTHM_ENGINE]);
    }

  private:
    // Less than an engine takes in one run without allocating: those of full calls, and of a begin.
    static constexpr uint32_t CAPACITY = EventQueue::CAPACITY + NUM_CHANNELS * NUM_CONTROLLERS;

    // The events of the next run, each engine's in order.
    class Queues : public EngineEvents {
      public:
        void put(unsigned engine, const midi_event& event) override;
        [[nodiscard]] bool has_room() const;

        std::array<std::array<midi_event, CAPACITY>, NUM_GM_ENGINES> events;
        std::array<uint32_t, NUM_GM_ENGINES> counts{};
    };

    void silence(unsigned engine, uint32_t time);
    void take_set(const GmSet& new_set);
    void put_globals(uint32_t time);
    // Program c on channel c, as in a new engine: a filter reads controls up to CONTROL_PERIOD
    // samples before its note has set them.
    void put_programs(unsigned engine, uint32_t time);
    // Takes the events of the next run; valid until it is there.
    std::span<const midi_event> take_events(unsigned engine);
    void add_drums(Tarquil* engine, float* pcm, uint32_t frames, uint32_t time);

    // The drums' engine stops after half a second of silence.
    static constexpr uint32_t REST_AFTER = SAMPLE_RATE / 2;

    std::array<ControllerBytes, GM_PROGRAMS> programs{};
    ControllerBytes globals{};
    const GmSet* set = nullptr;
    GmDialect dialect;
    std::unique_ptr<Queues> queues;
    bool refresh_waits = false; // for room
    Limiter limiter;
    SideEngine drum_side{REST_AFTER};
    bool is_ending = false;
    std::array<unsigned, NUM_GM_ENGINES> engine_voices{};
    std::array<unsigned, NUM_GM_ENGINES> most_voices{};
};

} // namespace tarquil
