// A player's sound in blocks of any length without delay.

#include "player/granule_stream.h"

#include <algorithm>

#include "common/assertion.h"

namespace tarquil {

namespace {

// How many frames a run of the engine takes to bring `missing` frames.
uint32_t whole_granules(uint32_t missing) {
    return (missing + GRANULARITY - 1) / GRANULARITY * GRANULARITY;
}

} // namespace

uint32_t GranuleStream::event_time(int32_t delay) const {
    // The spare frames are played first; an event behind the clock waits for its next run.
    const int64_t time = int64_t(audio.time()) + delay - n_samples_in_spare;
    return uint32_t(std::max<int64_t>(time, 0));
}

const float* GranuleStream::next(uint32_t frames) {
    TARQ_ASSERT(n_samples_in_spare < GRANULARITY);
    std::copy_n(spare_buf, 2 * n_samples_in_spare, out_buf);
    const uint32_t to_render =
        frames > n_samples_in_spare ? whole_granules(frames - n_samples_in_spare) : 0;
    if (to_render > 0)
        audio.run(out_buf + size_t(2) * n_samples_in_spare, to_render);
    const uint32_t new_samples_in_spare = to_render + n_samples_in_spare - frames;
    TARQ_ASSERT(new_samples_in_spare < GRANULARITY);
    std::copy_n(out_buf + size_t(2) * frames, 2 * new_samples_in_spare, spare_buf);
    n_samples_in_spare = new_samples_in_spare;
    return out_buf;
}

} // namespace tarquil
