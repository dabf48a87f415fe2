// Settings of the compressors turned into factors per sample.

#include "softsynth/effects/compressor.h"

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

// As good as infinite: the level is at least 0.0001 and the peak rarely above 10.
constexpr float INSTANT_ATTACK_FACTOR = 100000.0F;

} // namespace

float compressor_attack_factor(float attack_seconds) {
    if (attack_seconds == 0.0F)
        return INSTANT_ATTACK_FACTOR;
    return std::exp2(1.0F / (attack_seconds * float(SAMPLE_RATE) + 1.0F));
}

float compressor_release_factor(float release_seconds) {
    return std::exp2(-1.0F / (release_seconds * float(SAMPLE_RATE) + 1.0F));
}

} // namespace tarquil
