// The stereo cascade against the mono one.

#include "softsynth/filters/stereo_filter.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

constexpr float OMEGA = 0.4F;
constexpr float Q = 1.5F;
constexpr float GAIN = 0.4F;
constexpr uint32_t FRAMES = 256;

// Every type and depth, the sides different, in two blocks: the same bits as two mono filters.
TEST(StereoFilter, IsTheMonoFilterOnEitherSide) {
    const std::vector<float> frames = noise(size_t(2) * FRAMES);
    for (int type = FILTER_NONE; type <= FILTER_HIGH_SHELF; type++) {
        for (int depth = 0; depth <= Filter::MAX_DEPTH; depth++) {
            StereoFilter stereo;
            stereo.init(FilterType(type), depth);
            std::vector<float> out = frames;
            stereo.render(out.data(), FRAMES / 2, OMEGA, Q, GAIN);
            stereo.render(out.data() + FRAMES, FRAMES / 2, OMEGA, Q, GAIN);
            for (const size_t side : {0U, 1U}) {
                std::vector<float> expected(FRAMES);
                std::vector<float> actual(FRAMES);
                for (size_t i = 0; i < FRAMES; i++) {
                    expected[i] = frames[2 * i + side];
                    actual[i] = out[2 * i + side];
                }
                Filter mono;
                mono.init(FilterType(type), 0, depth, 0.0F);
                mono.set_linear_cutoff(OMEGA);
                mono.set_resonance(Q);
                mono.set_dbgain_normalized(GAIN);
                mono.update();
                mono.render_chunk(expected.data(), FRAMES);
                EXPECT_EQ(actual, expected) << type << " " << depth << " " << side;
            }
        }
    }
}

} // namespace

} // namespace tarquil
