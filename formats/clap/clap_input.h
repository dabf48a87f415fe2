// A host's events as a player's: notes of both dialects, MIDI, and what parameters are to become.

#pragma once

#include <clap/events.h>

#include <optional>

#include "formats/clap/note_table.h"
#include "formats/common/host_controls.h"

namespace tarquil {

// What a host must read again because of what it has sent: CLAP_PARAM_RESCAN_* flags, and the names
// of the keys.
using StaleFlags = uint32_t;
inline constexpr StaleFlags STALE_NOTE_NAMES = 1U << 31U;

struct ControlChange {
    const HostControl* control = nullptr;
    int value = 0;
};

// What a parameter event says; nothing for any other event, a parameter that is not known or a
// value that is no number.
std::optional<ControlChange> read_control_change(const clap_event_header& event);

// What such a change makes stale besides its own parameter, whose value was `before`.
StaleFlags stale_after(const ControlChange& change, int before);

class ClapInput {
  public:
    explicit ClapInput(HostedPlayer& played) : player(played) {}

    // Notes and MIDI, within a block of the player.  Events of other name spaces, of ports and
    // kinds that there are not, and such as are too short, do nothing.
    void play(const clap_event_header& event);
    void reset() { notes.clear(); }

  private:
    void play_note(const clap_event_note& event);
    void play_midi(const clap_event_midi& event);
    void send(unsigned kind, unsigned channel, unsigned data1, unsigned data2, uint32_t frame);

    HostedPlayer& player;
    NoteTable notes;
};

} // namespace tarquil
