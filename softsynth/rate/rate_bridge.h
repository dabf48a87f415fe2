// From an engine that runs in quanta of a fixed size to a host at any rate, whose blocks have any
// size.
//
// The engine's quanta lie on a grid that starts with frame 0, so what the host hears does not
// depend on its blocks.  A quantum runs as late as it can: when a host frame needs its sound.  The
// latency is the least with which every host frame whose events fall within that quantum has then
// arrived:
//
//   latency L in host frames, (L + 1) * 44100 / rate >= H + quantum - 1/2
//
// (H: the filter's reach, 0 at 44,100 Hz; the half: an event goes to its nearest engine frame).  An
// event at host frame h belongs at engine frame engine_time(h); its sound leaves at h + L, exact to
// half an engine frame. At 44,100 Hz the sound passes unchanged, quantum - 1 frames late.

#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "common/assertion.h"
#include "softsynth/rate/polyphase_stream.h"
#include "softsynth/rate/rate_ratio.h"

namespace tarquil {

class RateBridge {
  public:
    // Takes a rate in Hz (RateRatio::of) and starts at frame 0; false, and nothing has changed, if
    // that can not be.  `quantum`: 1..MAX_NUM_SAMPLES engine frames.  Not for the audio thread.
    [[nodiscard]] bool activate(double host_rate, uint32_t quantum_frames);

    // Back to frame 0 and silence before it.  Safe on the audio thread, as is all below.
    void reset() { stream.reset(); }

    [[nodiscard]] uint32_t latency_frames() const { return latency; } // host frames

    // Of any host frame since the start, whenever asked.
    [[nodiscard]] uint64_t engine_time(uint64_t host_frame) const {
        return ratio.engine_time(host_frame);
    }

    // The host frame that comes next, and the engine frame that runs next.
    [[nodiscard]] uint64_t host_frame() const { return stream.frames_read(); }
    [[nodiscard]] uint64_t engine_frame() const { return stream.frames_written(); }

    // Engine frames that have to run for the next `count` host frames: whole quanta, mostly none.
    [[nodiscard]] uint64_t engine_frames_needed(uint64_t count) const;

    // The next `count` host frames.  Calls run_engine(float* frames, uint32_t num_frames) as needed
    // for the next quanta as interleaved stereo: num_frames is a multiple of the quantum.
    template <typename RunEngine>
    void render(float* left, float* right, uint32_t count, const RunEngine& run_engine) {
        while (count > 0) {
            const uint32_t piece = std::min(count, max_piece);
            const auto needed = uint32_t(engine_frames_needed(piece));
            TARQ_ASSERT(2 * size_t(needed) <= quanta.size());
            if (needed > 0) {
                run_engine(quanta.data(), needed);
                stream.write(quanta.data(), needed);
            }
            stream.read(left, right, piece);
            left += piece;
            right += piece;
            count -= piece;
        }
    }

  private:
    // settings
    RateRatio ratio;
    uint32_t quantum = 1;
    uint32_t latency = 0;
    uint32_t max_piece = 1; // host frames that are made at once

    // memory
    PolyphaseStream stream;
    std::vector<float> quanta; // interleaved, as the engine gives them
};

} // namespace tarquil
