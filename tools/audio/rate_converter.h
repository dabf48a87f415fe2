// Conversion of a stereo stream from the engine's sample rate to a file's.

#pragma once

#include <samplerate.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tarquil {

// Takes interleaved stereo frames.
using FrameSink = std::function<void(const float* frames, uint64_t num_frames)>;

// libsamplerate at its best quality (SRC_SINC_BEST_QUALITY); the same rate passes unchanged.
class RateConverter {
  public:
    RateConverter(int target_rate, FrameSink frame_sink);

    // Interleaved stereo frames at SAMPLE_RATE.
    void write(const float* frames, uint64_t num_frames);

    // Sends what the filter still holds.
    void finish();

  private:
    void convert(const float* frames, uint64_t num_frames, bool is_end);

    struct StateDeleter {
        void operator()(SRC_STATE* memory) const { src_delete(memory); }
    };
    std::unique_ptr<SRC_STATE, StateDeleter> state; // null: the same rate
    double ratio;
    std::vector<float> converted;
    FrameSink sink;
};

} // namespace tarquil
