// A player's sound in blocks of any length without delay: runs of whole granules, the frames
// beyond the block kept for the next one.

#pragma once

#include <cstdint>

#include "player/player_audio.h"

namespace tarquil {

class GranuleStream {
  public:
    // The player's audio side stays as long as the object.
    explicit GranuleStream(PlayerAudio& played) : audio(played) {}

    // The engine's time of the next block's frame `delay`; frames before the block sound in what is
    // rendered next.
    [[nodiscard]] uint32_t event_time(int32_t delay) const;

    // The next `frames` (at most MAX_NUM_SAMPLES) of interleaved stereo, valid until the next call.
    const float* next(uint32_t frames);

  private:
    PlayerAudio& audio;
    // Room for a run and the spare frames in front of it.
    float out_buf[2 * (MAX_NUM_SAMPLES + GRANULARITY)] = {};
    float spare_buf[2 * (GRANULARITY - 1)] = {};
    uint32_t n_samples_in_spare = 0;
};

} // namespace tarquil
