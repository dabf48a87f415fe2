// The 2:1 converters: impulse responses, gains, and blocks that join.

#include "softsynth/filters/resampler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

constexpr unsigned TAPS = 2 * RESAMPLE_HALF_TAPS;

float tap(const float* kernel, unsigned j) {
    return kernel[j < RESAMPLE_HALF_TAPS ? j : TAPS - 1 - j];
}

template <typename Converter>
std::vector<float> decimate(Converter& converter, const std::vector<float>& in) {
    std::vector<float> out(in.size() / 2);
    converter.resample(in.data(), out.data(), uint32_t(out.size()));
    return out;
}

// The older sample of a pair meets the odd taps, the newer one the even taps.
template <typename Converter> void expect_impulse_response(const float* kernel) {
    for (const unsigned offset : {0U, 1U}) {
        Converter converter;
        std::vector<float> in(64);
        in[offset] = 1.0F;
        const std::vector<float> out = decimate(converter, in);
        for (unsigned j = 0; j < RESAMPLE_HALF_TAPS; j++)
            EXPECT_EQ(out[j], tap(kernel, 2 * j + 1 - offset)) << offset << " " << j;
        EXPECT_EQ(out[RESAMPLE_HALF_TAPS], 0.0F);
    }
}

TEST(Resampler, ImpulseResponsesAreTheSymmetricKernels) {
    expect_impulse_response<Downsampler>(resample_kernel);
    expect_impulse_response<AltDownsampler>(alt_resample_kernel);

    std::vector<float> in(64);
    in[0] = 1.0F;
    std::vector<float> out(128);
    Upsampler up;
    up.resample(in.data(), out.data(), 64);
    for (unsigned j = 0; j < TAPS; j++)
        EXPECT_EQ(out[j], tap(resample_kernel, j)) << j;
    EXPECT_EQ(out[TAPS], 0.0F);
}

TEST(Resampler, BlocksJoinAndADecimatorMayWorkInPlace) {
    const std::vector<float> in = noise(256);
    AltDownsampler whole;
    const std::vector<float> expected = decimate(whole, in);
    AltDownsampler pieces;
    std::vector<float> sound = in;
    for (uint32_t start = 0; start < 128; start += 8)
        pieces.resample(sound.data() + size_t(2) * start, sound.data() + start, 8);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), sound.begin()));
    pieces.init();
    EXPECT_EQ(decimate(pieces, in), expected);
}

} // namespace

} // namespace tarquil
