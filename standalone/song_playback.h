// A song's messages on the frames of a device's blocks.

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "midi/smf/smf_reader.h"
#include "softsynth/rate/rate_ratio.h"

namespace tarquil {

class SongPlayback {
  public:
    // The song stays as long as the object.
    explicit SongPlayback(const Song& played) : song(played) {}

    // Goes on where the song is, from frame 0 of a device at this rate.
    void start(const RateRatio& device_ratio);

    struct Due {
        uint32_t frame = 0;               // of the block
        std::span<const uint8_t> bytes;   // none: the song ends, and every key is let go
        const SongTempo* tempo = nullptr; // from here on, instead of a message
    };
    // Takes the next message if its frame in the block is `last_frame` or before.  At an upward
    // ratio the engine gets each on the sample that the song says, as a renderer has it.
    std::optional<Due> take(uint32_t last_frame);

    // The block is over.
    void advance(uint32_t frames) { block_start += frames; }

    [[nodiscard]] bool has_ended() const { return ended; }

  private:
    [[nodiscard]] uint64_t device_frame(uint32_t time) const;

    const Song& song;
    size_t next_message = 0;
    size_t next_exclusive = 0;
    size_t next_tempo = 0;
    bool ended = false;

    RateRatio ratio;
    uint64_t song_start = 0;  // engine frames of the song before the device's frame 0
    uint64_t block_start = 0; // device frames
};

} // namespace tarquil
