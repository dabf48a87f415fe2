// A stereo stream at the engine's rate, read at a host's.
//
// Host frame n is the filtered sound around engine frame (n - delay) * 44100 / rate; before engine
// frame 0 there is silence.  The engine's own rate passes unchanged.  What is read depends on
// nothing but what has been written, whatever the pieces of either.  Once activated nothing
// allocates.

#pragma once

#include <memory>
#include <vector>

#include "softsynth/rate/polyphase_table.h"
#include "softsynth/rate/rate_ratio.h"

namespace tarquil {

class PolyphaseStream {
  public:
    // `max_write`: the most frames of one write.  `max_unread`: the most that are left behind what
    // the next host frame needs whenever something is written.  Not for the audio thread.
    void activate(const RateRatio& rates, uint32_t delay_frames, uint32_t max_write,
                  uint32_t max_unread);

    // Back to host frame 0 and engine frame 0.
    void reset();

    // So many engine frames, counted from the first one, are needed to read `count` more host
    // frames; 0 while these lie in the silence before.
    [[nodiscard]] uint64_t engine_frames_for(uint64_t count) const;
    // Host frames that can be read.
    [[nodiscard]] uint64_t readable() const;

    [[nodiscard]] uint64_t frames_written() const { return written; }
    [[nodiscard]] uint64_t frames_read() const { return read_frames; }

    // Interleaved stereo frames at the engine's rate.
    void write(const float* frames, uint32_t count);
    // At most `readable`.
    void read(float* left, float* right, uint32_t count);

  private:
    [[nodiscard]] uint32_t reach() const { return table ? table->half_taps : 0; }
    [[nodiscard]] EnginePosition place_of(uint64_t host_frame) const {
        return ratio.position(int64_t(host_frame) - delay);
    }
    // The oldest engine frame that the place needs.
    [[nodiscard]] int64_t window_start(const EnginePosition& place) const {
        return place.frame + (table ? 1 - int64_t(table->half_taps) : 0);
    }
    void drop_old_frames();

    // settings
    RateRatio ratio;
    int64_t delay = 0;
    std::shared_ptr<const PolyphaseTable> table; // null: the engine's own rate

    // memory: the engine frames from first_kept on
    std::vector<float> left_frames;
    std::vector<float> right_frames;
    uint32_t num_kept = 0;
    int64_t first_kept = 0;
    uint64_t written = 0;
    uint64_t read_frames = 0;
};

} // namespace tarquil
