// The engine's sample rate against a host's as an exact fraction.

#include "softsynth/rate/rate_ratio.h"

#include <cmath>
#include <numeric>

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr uint32_t STEPS_PER_HZ = 1000;

// count = quotient * divisor + rest, the rest within 0..divisor - 1.
struct Division {
    Division(int64_t count, uint32_t divisor)
        : quotient(count / int64_t(divisor)), rest(count % int64_t(divisor)) {
        if (rest < 0) {
            rest += divisor;
            quotient--;
        }
    }
    int64_t quotient;
    int64_t rest;
};

} // namespace

std::optional<RateRatio> RateRatio::of(double host_rate) {
    if (!(host_rate >= MIN_HOST_RATE && host_rate <= MAX_HOST_RATE))
        return std::nullopt;
    const auto engine = uint32_t(SAMPLE_RATE) * STEPS_PER_HZ;
    const auto host = uint32_t(std::lround(host_rate * STEPS_PER_HZ));
    const uint32_t common = std::gcd(engine, host);
    return RateRatio{engine / common, host / common};
}

// In two parts, since the product of a frame and a factor of the ratio would soon need more bits.
EnginePosition RateRatio::position(int64_t host_frame) const {
    const Division host(host_frame, host_frames);
    const Division rest(host.rest * int64_t(engine_frames), host_frames);
    return {host.quotient * int64_t(engine_frames) + rest.quotient, uint32_t(rest.rest)};
}

uint64_t RateRatio::engine_time(uint64_t host_frame) const {
    const EnginePosition place = position(int64_t(host_frame));
    return uint64_t(place.frame) + (place.phase >= host_frames - place.phase ? 1 : 0);
}

int64_t RateRatio::host_frame_from(int64_t engine_frame) const {
    const Division engine(engine_frame, engine_frames);
    const Division rest(engine.rest * int64_t(host_frames), engine_frames);
    return engine.quotient * int64_t(host_frames) + rest.quotient + (rest.rest > 0 ? 1 : 0);
}

} // namespace tarquil
