// Which keys are down on each channel, and how hard they were struck, in either dialect.

#pragma once

#include <array>
#include <cstdint>

#include "midi/gm/gm_map.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

// For the audio thread alone.
class KeysDown {
  public:
    // Follows what is played: in the native dialect an event of the engine's own, in General MIDI a
    // record of gm_message.
    void follow_event(const midi_event& event);
    void follow_message(const midi_event& record);
    void clear() { velocities = {}; }

    // 0 for a key that is up, which a pedal may hold.
    [[nodiscard]] uint8_t velocity(unsigned channel, unsigned key) const {
        return velocities[channel][key];
    }

  private:
    void follow_note(const midi_event& event);

    std::array<std::array<uint8_t, NUM_KEYS>, NUM_CHANNELS> velocities{};
};

} // namespace tarquil
