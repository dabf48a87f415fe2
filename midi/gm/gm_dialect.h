// The General MIDI dialect: any MIDI messages in, events of two engines out.
//
// Plays files, keyboards and hosts as a General MIDI module does, on engines that know only their
// own controllers: the first engine plays the melodic parts, the second the drums.  What comes out
// is a pure function of the messages and their times, however the time between is cut into calls
// of advance.  Nothing is allocated while it plays.

#pragma once

#include <bitset>
#include <cstdint>
#include <span>

#include "midi/gm/engine_events.h"
#include "midi/gm/gm_message.h"
#include "midi/gm/gm_state.h"
#include "midi/gm/melodic_parts.h"
#include "midi/gm/rhythm_parts.h"

namespace tarquil {

class GmDialect {
  public:
    // The most events that one call makes, advance by one sample included.
    static constexpr unsigned MAX_EVENTS_PER_CALL = 6144;

    GmDialect();
    GmDialect(const GmDialect&) = delete;
    GmDialect& operator=(const GmDialect&) = delete;

    // What is played; null: no map, thus no drums and no laws; no guests.  Both outlive their use.
    void set_sounds(const GmSounds& sounds, const GmMap* map,
                    const SoundRules* guest_rules = nullptr);

    // The melodic programs that the map's laws are for, all at first, and those of the guests.
    void set_lawful(const std::bitset<GM_PROGRAMS>& programs,
                    const std::bitset<GM_PROGRAMS>& guests) {
        state.lawful = programs;
        state.lawful_guests = guests;
    }

    // Begins at `time` with engines of which nothing is known, all settings as "GM on" leaves them.
    void start(uint32_t time);

    // As a program change does, which nobody sent.
    void choose_program(unsigned channel, unsigned program);

    // Runs what is scheduled before `time`, then the message: a status byte and its data, or a
    // whole system exclusive message.  Times before the last one count as that.
    void translate(uint32_t time, std::span<const uint8_t> message, EngineEvents& out) {
        translate(gm_message(time, message), out);
    }
    void translate(const midi_event& message, EngineEvents& out);

    // Runs what is scheduled before `until`.
    void advance(uint32_t until, EngineEvents& out);

    // Lets all keys and pedals go, as at the end of a song.
    void release_all(uint32_t time, EngineEvents& out);

    // Ends everything within a few milliseconds; settings stay.
    void panic(uint32_t time, EngineEvents& out);

    // Sounds have been edited: sends what that changes.
    void refresh(uint32_t time, EngineEvents& out);
    // The same for one controller of one melodic sound, or a global one.
    void refresh_byte(uint32_t time, unsigned program, unsigned controller, EngineEvents& out);

    // Lets the clock start `frames` later.
    void move_clock_back(uint32_t frames);

    [[nodiscard]] const GmReport& report() const { return state.report; }
    [[nodiscard]] const GmChannel& channel(unsigned index) const { return state.channels[index]; }

    // The first engine's channels, by bit, that play a program.
    [[nodiscard]] uint32_t channels_of(unsigned program) const {
        return melodic.channels_of(program);
    }

    // Notes whose end is still to come, and the keys that struck them.
    [[nodiscard]] unsigned num_held_notes() const {
        return melodic.num_held_notes() + rhythm.num_hits();
    }
    [[nodiscard]] ChannelKeys held_keys() const;

  private:
    uint32_t step_to(uint32_t time, EngineEvents& out);
    void play_channel_message(const midi_event& message, EngineEvents& out);
    void note_on(uint32_t time, unsigned channel, unsigned key, unsigned velocity,
                 EngineEvents& out);
    void note_off(uint32_t time, unsigned channel, unsigned key, EngineEvents& out);
    void change_controller(uint32_t time, unsigned channel, unsigned controller, unsigned value,
                           EngineEvents& out);
    void change_mode(uint32_t time, unsigned channel, unsigned controller, EngineEvents& out);
    void change_pedal(uint32_t time, unsigned channel, unsigned pedal, unsigned value,
                      EngineEvents& out);
    void enter_data(uint32_t time, unsigned channel, unsigned controller, unsigned value,
                    EngineEvents& out);
    void set_engine_controller(uint32_t time, unsigned channel, unsigned value, EngineEvents& out);
    void reset_controllers(uint32_t time, unsigned channel, EngineEvents& out);
    void update(uint32_t time, unsigned channel, unsigned midi_controller, EngineEvents& out);
    void play_sysex(uint32_t time, const SysexMessage& sysex, EngineEvents& out);
    void reset(uint32_t time, EngineEvents& out);
    void silence_all(uint32_t time, EngineEvents& out);
    void update_master(uint32_t time, EngineEvents& out);
    static void put_global(uint32_t time, unsigned number, uint8_t byte, EngineEvents& out);

    GmState state;
    MelodicParts melodic;
    RhythmParts rhythm;
    uint32_t now = 0;
    // When `is_due_known`: what the parts say, which they are not asked while nothing happens.
    DueTime next_due;
    bool is_due_known = false;
    std::bitset<NUM_CONTROLLERS> changed_globals; // by NRPN, until a reset
};

} // namespace tarquil
