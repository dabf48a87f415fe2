// When the sound after a song's last event ends.

#pragma once

#include <cstdint>
#include <optional>

#include "player/silence.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

inline constexpr auto SILENCE_SAMPLES = uint32_t(SILENCE_SECONDS * SAMPLE_RATE);
inline constexpr auto MAX_AUTO_TAIL = uint32_t(MAX_RINGING_SECONDS * SAMPLE_RATE);

class Tail {
  public:
    // Ends `length` samples after the song; with none, at silence or after MAX_AUTO_TAIL.  The end
    // does not depend on how the sound is cut into blocks.
    Tail(uint32_t song_end, std::optional<uint32_t> length)
        : start(song_end), last_sound(song_end), end(song_end + length.value_or(MAX_AUTO_TAIL)),
          is_auto(!length) {}

    // The most samples that there will be.
    [[nodiscard]] uint32_t get_end() const { return end; }

    // Looks at the interleaved frames from the sample `time` on and returns how many of them
    // belong to the sound; fewer than there are only at its end.
    uint32_t add(const float* frames, uint32_t num_frames, uint32_t time);

  private:
    uint32_t start;
    uint32_t last_sound; // one past the last sample that is not silent
    uint32_t end;
    bool is_auto;
};

} // namespace tarquil
