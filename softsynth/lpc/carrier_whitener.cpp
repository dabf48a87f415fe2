// A carrier made fit to speak.

#include "softsynth/lpc/carrier_whitener.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

constexpr float FORGET = 1.0F / 2205.0F; // averages fade within 50 ms
constexpr float LOUDEST = 16.0F;         // samples beyond are clipped
constexpr float QUIETEST = 1e-6F;        // power: a carrier below -60 dB counts as silent
constexpr float FLOOR = 1e-9F;           // power added to every average
constexpr float MAX_OUTPUT = 16.0F;

} // namespace

CarrierWhitener::CarrierWhitener(double filter_warping)
    : pole(float(filter_warping)),
      scale(float(1.0 / std::sqrt(1.0 - filter_warping * filter_warping))) {}

float CarrierWhitener::process(float x) {
    // The order of the arguments lets a value that is not a number end as -LOUDEST.
    float f = std::min(std::max(-LOUDEST, x), LOUDEST);
    power_in += FORGET * (f * f - power_in);
    float g = f;
    for (Section& section : sections) {
        const float d = section.backward + pole * (section.delayed - g);
        section.backward = g;
        section.delayed = d;
        const float k = -2.0F * section.product / (section.power + FLOOR);
        section.product += FORGET * (f * d - section.product);
        section.power += FORGET * (f * f + d * d - section.power);
        const float shorter = f;
        f = shorter + k * d;
        g = d + k * shorter;
    }
    const float straight = scale * (f - pole * predicted);
    predicted = f;
    f = straight;
    power_out += FORGET * (f * f - power_out);
    presence = std::min(power_in / QUIETEST, 1.0F);
    const float level = std::sqrt(power_out + FLOOR);
    return presence * std::min(std::max(-MAX_OUTPUT, f / level), MAX_OUTPUT);
}

} // namespace tarquil
