// Blocks of any size passed on in large equal pieces.

#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace tarquil {

// Takes interleaved stereo frames.
using FrameSink = std::function<void(const float* frames, uint64_t num_frames)>;

// A file gets few system calls, and a lossy encoder, whose result depends on the pieces, always the
// same ones.
class FrameChunks {
  public:
    static constexpr uint64_t CHUNK_FRAMES = 4096;

    explicit FrameChunks(FrameSink frame_sink);

    void write(const float* frames, uint64_t num_frames);
    // Passes on what is left.
    void finish();

  private:
    FrameSink sink;
    std::vector<float> waiting;
};

} // namespace tarquil
