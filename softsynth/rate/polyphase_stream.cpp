// A stereo stream at the engine's rate, read at a host's.

#include "softsynth/rate/polyphase_stream.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/kernels/kernels.h"

namespace tarquil {

void PolyphaseStream::activate(const RateRatio& rates, uint32_t delay_frames, uint32_t max_write,
                               uint32_t max_unread) {
    ratio = rates;
    delay = delay_frames;
    table = ratio.is_one() ? nullptr : shared_polyphase_table(ratio);
    const size_t size = size_t(2) * reach() + max_unread + max_write;
    left_frames.assign(size, 0.0F);
    right_frames.assign(size, 0.0F);
    reset();
}

void PolyphaseStream::reset() {
    written = 0;
    read_frames = 0;
    first_kept = std::min(window_start(place_of(0)), int64_t(0));
    num_kept = uint32_t(-first_kept);
    TARQ_ASSERT(num_kept <= left_frames.size());
    std::fill_n(left_frames.begin(), num_kept, 0.0F);
    std::fill_n(right_frames.begin(), num_kept, 0.0F);
}

uint64_t PolyphaseStream::engine_frames_for(uint64_t count) const {
    if (count == 0)
        return 0;
    const int64_t end = place_of(read_frames + count - 1).frame + reach() + 1;
    return uint64_t(std::max(end, int64_t(0)));
}

uint64_t PolyphaseStream::readable() const {
    const int64_t end = ratio.host_frame_from(int64_t(written) - reach()) + delay;
    return uint64_t(std::max(end - int64_t(read_frames), int64_t(0)));
}

void PolyphaseStream::drop_old_frames() {
    const int64_t oldest = window_start(place_of(read_frames));
    const auto num_old = uint32_t(oldest - first_kept);
    std::copy_n(left_frames.begin() + num_old, num_kept - num_old, left_frames.begin());
    std::copy_n(right_frames.begin() + num_old, num_kept - num_old, right_frames.begin());
    num_kept -= num_old;
    first_kept = oldest;
}

void PolyphaseStream::write(const float* frames, uint32_t count) {
    if (num_kept + count > left_frames.size())
        drop_old_frames();
    TARQ_ASSERT(num_kept + count <= left_frames.size());
    float* left = left_frames.data() + num_kept;
    float* right = right_frames.data() + num_kept;
    for (uint32_t i = 0; i < count; i++) {
        left[i] = frames[2 * i];
        right[i] = frames[2 * i + 1];
    }
    num_kept += count;
    written += count;
}

void PolyphaseStream::read(float* left, float* right, uint32_t count) {
    TARQ_ASSERT(count <= readable());
    const EnginePosition place = place_of(read_frames);
    read_frames += count;
    const auto first = size_t(window_start(place) - first_kept);
    const float* in_left = left_frames.data() + first;
    const float* in_right = right_frames.data() + first;
    if (!table) {
        std::copy_n(in_left, count, left);
        std::copy_n(in_right, count, right);
        return;
    }
    const Polyphase sound = {.rows = table->rows(),
                             .num_taps = table->num_taps,
                             .interpolated = table->interpolated,
                             .rows_per_phase = table->rows_per_phase,
                             .phase = place.phase,
                             .phases = ratio.host_frames,
                             .whole_step = ratio.engine_frames / ratio.host_frames,
                             .rest_step = ratio.engine_frames % ratio.host_frames,
                             .left = in_left,
                             .right = in_right,
                             .out_left = left,
                             .out_right = right};
    kernels().polyphase(sound, count);
}

} // namespace tarquil
