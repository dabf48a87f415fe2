// Vibrato by bends: a channel's modulation and a sound's own, which comes in after each new note.

#pragma once

#include <cstdint>

#include "midi/gm/gm_channel.h"
#include "midi/gm/gm_map.h"

namespace tarquil {

class Vibrato {
  public:
    // One step of bend; the engine reads pitches every 32 samples.
    static constexpr uint32_t PERIOD = 128;

    // True when the sound or the channel asks for any.
    static bool is_wanted(const OwnVibrato& own, const GmChannel& channel);

    // A note begins and no other is held: the delay starts anew.
    void start_note(uint32_t time) { note_start = time; }

    // The next value in semitones, of the step at `time`.
    double step(const OwnVibrato& own, const GmChannel& channel, uint32_t time);

    // The next step begins a new swing, without a jump.
    void stop() { phase = 0.0; }

    void move_clock_back(uint32_t frames) { note_start -= frames; }

  private:
    uint32_t note_start = 0;
    double phase = 0.0; // cycles
};

} // namespace tarquil
