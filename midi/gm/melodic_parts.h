// The melodic parts: keys and pedals of the MIDI channels, and which of the first engine's channels
// plays them.
//
// Each sound (MIDI channel and program) in use has a part, an engine channel of its own, so that a
// program change never cuts what rings.  When all sixteen are in use, the one that has been silent
// longest gives way.  A part knows what it told its engine channel and sends changes only.

#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "midi/gm/engine_channel.h"
#include "midi/gm/gm_state.h"
#include "midi/gm/vibrato.h"
#include "midi/gm/voice_budget.h"

namespace tarquil {

class MelodicParts {
  public:
    explicit MelodicParts(GmState& shared);

    // Nothing sounds, and nothing is known of the engine.
    void start();

    void note_on(uint32_t time, unsigned channel, unsigned key, unsigned velocity,
                 EngineEvents& out);
    void note_off(uint32_t time, unsigned channel, unsigned key, EngineEvents& out);

    // As if all keys were let go; pedals still hold.
    void release_keys(uint32_t time, unsigned channel, EngineEvents& out);
    // A pedal has changed: releases what nothing holds any more.
    void release_unheld(uint32_t time, unsigned channel, EngineEvents& out);
    // The sostenuto pedal takes hold of the keys that are down, or lets go.
    void set_sostenuto(uint32_t time, unsigned channel, bool is_down, EngineEvents& out);

    // Ends the channel's notes, or everything, within a few milliseconds; keys and pedals count as
    // let go.  After silence_all no sound has a part.
    void silence(uint32_t time, unsigned channel, EngineEvents& out);
    void silence_all(uint32_t time, EngineEvents& out);

    // Sends what has changed: of one channel or of all, after an edit of sounds.
    void update(uint32_t time, unsigned channel, std::span<const unsigned> controllers,
                EngineEvents& out);
    void update_all(uint32_t time, EngineEvents& out);
    void update_program(uint32_t time, unsigned program, unsigned controller, EngineEvents& out);
    void update_bend(uint32_t time, unsigned channel, EngineEvents& out);
    void update_vibrato(uint32_t time, unsigned channel);

    [[nodiscard]] DueTime due() const;
    void run_due(uint32_t time, EngineEvents& out);

    void move_clock_back(uint32_t frames);

    // The engine channels, by bit, on which the program sounds or has sounded last.
    [[nodiscard]] uint32_t channels_of(unsigned program) const;

    // Notes that sound because a key or a pedal holds them; and the keys that struck them.
    [[nodiscard]] unsigned num_held_notes() const;
    void add_held_keys(ChannelKeys& held) const;

  private:
    static constexpr unsigned NUM_PARTS = 16;
    static constexpr uint8_t NONE = UINT8_MAX;

    // One key of a MIDI channel.
    struct Key {
        uint8_t part = NONE; // that sounds it
        uint8_t engine_note = 0;
        uint8_t velocity = 0;
        bool is_down = false;
        bool is_caught = false; // by the sostenuto pedal
        uint32_t start = 0;
        uint32_t release = 0; // its length, in samples
    };

    struct Part {
        EngineChannel engine;
        Vibrato vibrato;
        bool is_assigned = false;
        bool vibrates = false;
        bool has_tail = false;
        uint8_t channel = 0;
        uint8_t program = 0;
        uint16_t num_notes = 0;
        int shift = 0; // semitones that notes carry, for bends beyond an octave
        double vibrato_semitones = 0.0;
        uint32_t last_start = 0;
        uint32_t tail_end = 0;
        std::array<uint8_t, NUM_KEYS> keys{}; // by engine note; NONE: silent
    };

    unsigned find_part(uint32_t time, unsigned channel, EngineEvents& out);
    unsigned choose_part(uint32_t time, unsigned channel) const;
    void assign(uint32_t time, Part& part, unsigned channel, EngineEvents& out);
    void forget_notes(uint32_t time, unsigned part_index);
    void fade(uint32_t time, unsigned part_index, EngineEvents& out);
    [[nodiscard]] static bool is_sounding(const Part& part, uint32_t time);
    // That it may still be heard from its effects counts here.
    [[nodiscard]] static bool may_echo(const Part& part, uint32_t time);
    [[nodiscard]] const ControllerBytes& own_bytes(const Part& part) const;

    void release(uint32_t time, unsigned channel, unsigned key, EngineEvents& out);
    void drop(uint32_t time, Key& key);
    [[nodiscard]] bool is_held(unsigned channel, const Key& key) const;
    void relieve(uint32_t time, EngineEvents& out);
    bool release_quietest(uint32_t time, EngineEvents& out);

    [[nodiscard]] double wanted_semitones(const Part& part) const;
    void place_bend(Part& part);
    bool send_bend(uint32_t time, Part& part, EngineEvents& out);
    [[nodiscard]] unsigned engine_note(const Part& part, unsigned key);
    void apply_laws(uint32_t time, Part& part, unsigned key, unsigned velocity, EngineEvents& out);
    [[nodiscard]] unsigned velocity_of(const Part& part, unsigned key, unsigned velocity) const;
    void start_vibrato(uint32_t time, Part& part);
    void send(uint32_t time, Part& part, unsigned controller, EngineEvents& out);

    GmState& state;
    std::array<Part, NUM_PARTS> parts;
    std::array<std::array<Key, NUM_KEYS>, NUM_MIDI_CHANNELS> keys{};
    VoiceBudget budget;
    DueTime next_tick; // of the vibrato
    uint32_t tick_origin = 0;
};

} // namespace tarquil
