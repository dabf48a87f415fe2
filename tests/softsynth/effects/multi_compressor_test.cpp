// Band split, per-band settings and memory of the master compressor.

#include "softsynth/effects/multi_compressor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 1024;
constexpr double PI = 3.14159265358979;
constexpr double CENTRE_HZ[MC_N_BANDS] = {40.0, 420.0, 3300.0, 19000.0};

class MultiCompressorTest : public testing::Test {
  protected:
    void process() {
        compressor->process(buf, crossover_hz.data(), threshold.data(), ratio.data(), attack.data(),
                            release.data(), makeup.data());
    }

    // Amplitude of both sides of the response to a sine, measured after it has settled.
    std::array<double, 2> amplitude(double hz, float height = 0.1F) {
        compressor->reset();
        const double omega = hz * 2 * PI / 44100;
        std::array<double, 2> re{};
        std::array<double, 2> im{};
        buf.init(BLOCK);
        for (uint32_t n = 0; n < 40 * BLOCK; n += BLOCK) {
            for (uint32_t i = 0; i < BLOCK; i++) {
                const auto x = float(std::sin(omega * (n + i)));
                *buf.get_left_sample_ptr(i) = height * x;
                *buf.get_right_sample_ptr(i) = 0.5F * height * x;
            }
            process();
            if (n < 20 * BLOCK)
                continue;
            for (uint32_t i = 0; i < BLOCK; i++) {
                // Hann window: the sine need not fit the span.
                const double weight = 1 - std::cos(2 * PI * (n + i) / (20 * BLOCK));
                const double y[2] = {*buf.get_left_sample_ptr(i), *buf.get_right_sample_ptr(i)};
                for (size_t side = 0; side < 2; side++) {
                    re[side] += weight * y[side] * std::cos(omega * (n + i));
                    im[side] += weight * y[side] * std::sin(omega * (n + i));
                }
            }
        }
        return {std::hypot(re[0], im[0]) / (10 * BLOCK), std::hypot(re[1], im[1]) / (10 * BLOCK)};
    }

    std::unique_ptr<MultiCompressor> compressor = std::make_unique<MultiCompressor>();
    StereoBuffer buf;
    std::vector<float> crossover_hz = {150.0F, 1200.0F, 9000.0F};
    std::vector<float> threshold = {1.0F, 1.0F, 1.0F, 1.0F};
    std::vector<float> ratio = {4.0F, 4.0F, 4.0F, 4.0F};
    std::vector<float> attack = {0.001F, 0.001F, 0.001F, 0.001F};
    std::vector<float> release = {0.02F, 0.02F, 0.02F, 0.02F};
    std::vector<float> makeup = {1.0F, 1.0F, 1.0F, 1.0F};
};

TEST_F(MultiCompressorTest, QuietSignalsPassAndEachBandHasItsMakeup) {
    for (unsigned band = 0; band < MC_N_BANDS; band++) {
        makeup = {1.0F, 1.0F, 1.0F, 1.0F};
        // Within a decibel: the neighbours' share is not in phase.
        EXPECT_NEAR(amplitude(CENTRE_HZ[band])[0], 0.1, 0.01) << band;
        makeup = {3.0F, 3.0F, 3.0F, 3.0F};
        makeup[band] = 0.5F;
        const auto [left, right] = amplitude(CENTRE_HZ[band]);
        EXPECT_NEAR(left, 0.05, 0.02) << band;
        EXPECT_NEAR(right, 0.5 * left, 1e-4) << band;
    }
    EXPECT_EQ(compressor->get_attenuation(0), 1.0F);
}

TEST_F(MultiCompressorTest, EachBandHasItsOwnCompressor) {
    for (unsigned band = 0; band < MC_N_BANDS; band++) {
        threshold.assign(MC_N_BANDS, 1.0F);
        threshold[band] = 0.01F;
        amplitude(CENTRE_HZ[band]);
        for (unsigned other = 0; other < MC_N_BANDS; other++) {
            // Around 0.1 in the band itself: (0.1 / 0.01)^(1 / 4 - 1).
            const float expected = other == band ? 0.178F : 1.0F;
            EXPECT_NEAR(compressor->get_attenuation(other), expected, 0.03F) << band;
        }
    }
}

TEST_F(MultiCompressorTest, ResetForgetsTheSignal) {
    const auto render_noise = [this] {
        std::mt19937 random(5);
        buf.init(BLOCK);
        std::generate_n(buf.get_first_left_sample_ptr(), size_t(2) * BLOCK, [&random] {
            return std::uniform_real_distribution<float>(-1.0F, 1.0F)(random);
        });
        process();
        const float* samples = buf.get_first_left_sample_ptr();
        return std::vector<float>(samples, samples + size_t(2) * BLOCK);
    };
    threshold.assign(MC_N_BANDS, 0.1F);
    const std::vector<float> first = render_noise();
    EXPECT_NE(render_noise(), first);
    compressor->reset();
    EXPECT_EQ(render_noise(), first);

    for (const float height : {1e30F, std::numeric_limits<float>::infinity()}) {
        std::fill_n(buf.get_first_left_sample_ptr(), size_t(2) * BLOCK, height);
        process();
        buf.nullify();
        process();
        EXPECT_TRUE(all_finite(buf.get_first_left_sample_ptr(), 2 * BLOCK)) << height;
    }
}

TEST_F(MultiCompressorTest, BandNumberIsAsserted) {
    EXPECT_DEATH((void)compressor->get_attenuation(4),
                 "softsynth/effects/multi_compressor.cpp:[0-9]+: band < MC_N_BANDS");
}

} // namespace

} // namespace tarquil
