// Conversion of a stereo stream from the engine's sample rate to a file's.

#pragma once

#include <samplerate.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "softsynth/rate/polyphase_stream.h"
#include "tools/audio/frame_chunks.h"

namespace tarquil {

// Upwards as a host hears it (softsynth/rate), downwards by libsamplerate at its best quality
// (SRC_SINC_BEST_QUALITY), which keeps 97 % of the band; the same rate passes unchanged.
class RateConverter {
  public:
    RateConverter(int target_rate, FrameSink frame_sink);

    // Interleaved stereo frames at SAMPLE_RATE.
    void write(const float* frames, uint64_t num_frames);

    // Sends what the filter still holds.
    void finish();

  private:
    void raise(const float* frames, uint64_t num_frames);
    void send_raised(uint64_t num_frames);
    void lower(const float* frames, uint64_t num_frames, bool is_end);

    RateRatio ratio;
    FrameSink sink;
    std::vector<float> converted;

    PolyphaseStream stream; // upwards
    std::vector<float> left;
    std::vector<float> right;

    struct StateDeleter {
        void operator()(SRC_STATE* memory) const { src_delete(memory); }
    };
    std::unique_ptr<SRC_STATE, StateDeleter> state; // null: not downwards
};

} // namespace tarquil
