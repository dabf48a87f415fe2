// The engine's sample rate against a host's as an exact fraction, and what follows from it.
//
// Frames are counted from a common start.  Everything here is a function of its arguments alone, in
// integers, exact for 2^63 / 44,100,000 seconds: nothing drifts.

#pragma once

#include <cstdint>
#include <optional>

namespace tarquil {

inline constexpr double MIN_HOST_RATE = 1000.0; // Hz
inline constexpr double MAX_HOST_RATE = 768000.0;

// A place in the engine's sound: `phase` / host_frames behind `frame`.
struct EnginePosition {
    int64_t frame;
    uint32_t phase;
};

struct RateRatio {
    // So many engine frames last as long as so many host frames; no common factor.
    uint32_t engine_frames = 1;
    uint32_t host_frames = 1;

    // A rate in Hz, taken to the nearest thousandth.  Nothing outside MIN_HOST_RATE..MAX_HOST_RATE
    // or for what is not a number.
    static std::optional<RateRatio> of(double host_rate);

    [[nodiscard]] bool is_one() const { return engine_frames == host_frames; }

    // Where a host frame lies in the engine's sound.
    [[nodiscard]] EnginePosition position(int64_t host_frame) const;

    // The engine frame nearest to a host frame, the later one if it lies between two.
    [[nodiscard]] uint64_t engine_time(uint64_t host_frame) const;

    // The first host frame at or behind an engine frame.
    [[nodiscard]] int64_t host_frame_from(int64_t engine_frame) const;

    friend bool operator==(const RateRatio&, const RateRatio&) = default;
};

} // namespace tarquil
