// The voices that all channels share.

#pragma once

#include "softsynth/voices/voice.h"

namespace tarquil {

class VoicePool {
  public:
    static constexpr int NUM_VOICES = 96;

    // The first free voice in pool order, or null.
    Voice* alloc();

    // The channel's voice with the earliest start that is not cut or fading yet, or null; of two
    // that started together the one earlier in the pool.
    Voice* find_oldest_on_channel(const Channel& channel);

    // Active voices of all channels.
    [[nodiscard]] int voices_used() const;

    // Lets the clock start `frames` later.  Notes that are older than that stay in their order.
    void move_clock_back(uint32_t frames);

    // Of all notes that the voices play.
    CopyTuningCache& get_copy_tunings() { return copy_tunings; }

    [[nodiscard]] uint32_t place_of(const Voice& voice) const { return uint32_t(&voice - voices); }
    Voice& at(uint32_t place) { return voices[place]; }

    Voice* begin() { return voices; }
    Voice* end() { return voices + NUM_VOICES; }
    [[nodiscard]] const Voice* begin() const { return voices; }
    [[nodiscard]] const Voice* end() const { return voices + NUM_VOICES; }

  private:
    Voice voices[NUM_VOICES];
    CopyTuningCache copy_tunings;
};

} // namespace tarquil
