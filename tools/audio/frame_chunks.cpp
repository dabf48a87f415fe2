// Blocks of any size passed on in large equal pieces.

#include "tools/audio/frame_chunks.h"

#include <algorithm>
#include <utility>

namespace tarquil {

FrameChunks::FrameChunks(FrameSink frame_sink) : sink(std::move(frame_sink)) {
    waiting.reserve(2 * CHUNK_FRAMES);
}

void FrameChunks::write(const float* frames, uint64_t num_frames) {
    while (num_frames > 0) {
        const uint64_t taken = std::min(num_frames, CHUNK_FRAMES - waiting.size() / 2);
        waiting.insert(waiting.end(), frames, frames + 2 * taken);
        frames += 2 * taken;
        num_frames -= taken;
        if (waiting.size() == 2 * CHUNK_FRAMES)
            finish();
    }
}

void FrameChunks::finish() {
    if (!waiting.empty())
        sink(waiting.data(), waiting.size() / 2);
    waiting.clear();
}

} // namespace tarquil
