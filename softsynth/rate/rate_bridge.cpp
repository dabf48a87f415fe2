// From an engine that runs in quanta of a fixed size to a host at any rate.

#include "softsynth/rate/rate_bridge.h"

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

// About so many engine frames are made into host frames at once.
constexpr uint32_t PIECE = 512;

uint32_t latency_of(const RateRatio& ratio, uint32_t quantum) {
    const uint64_t double_frames = 2 * uint64_t(filter_reach(ratio) + quantum) - 1;
    const uint64_t divisor = 2 * uint64_t(ratio.engine_frames);
    return uint32_t((double_frames * ratio.host_frames + divisor - 1) / divisor) - 1;
}

} // namespace

bool RateBridge::activate(double host_rate, uint32_t quantum_frames) {
    TARQ_ASSERT(quantum_frames >= 1 && quantum_frames <= MAX_NUM_SAMPLES);
    const auto rates = RateRatio::of(host_rate);
    if (!rates)
        return false;
    ratio = *rates;
    quantum = quantum_frames;
    max_piece = uint32_t(std::max(ratio.host_frame_from(PIECE), int64_t(1)));
    const auto max_quanta = uint32_t(ratio.position(max_piece).frame) + quantum;
    quanta.assign(size_t(2) * max_quanta, 0.0F);
    latency = latency_of(ratio, quantum);
    stream.activate(ratio, latency, max_quanta, quantum);
    return true;
}

uint64_t RateBridge::engine_frames_needed(uint64_t count) const {
    const uint64_t end = stream.engine_frames_for(count);
    const uint64_t whole_quanta = (end + quantum - 1) / quantum * quantum;
    return whole_quanta > engine_frame() ? whole_quanta - engine_frame() : 0;
}

} // namespace tarquil
