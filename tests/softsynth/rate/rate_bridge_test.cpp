// The bridge to a host's rate: latency by impulse, causality, bytes at any split.

#include "softsynth/rate/rate_bridge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "tests/softsynth/signal/noise.h"

namespace tarquil {
namespace {

const double RATES[] = {8000,  22050, 32000,  44056,  44100,     47999,  48000,
                        88200, 96000, 176400, 192000, 1234.5678, 384000, 45678.901};

using Stereo = std::vector<std::pair<float, float>>;

// Plays `num_frames` host frames in blocks of random sizes.  The engine is `sample`, a function of
// the frame's number; right is what left is two frames later.
Stereo play(RateBridge& bridge, uint32_t quantum, size_t num_frames, uint32_t max_block,
            const std::function<float(uint64_t)>& sample) {
    std::mt19937 random(max_block);
    std::vector<float> left(max_block);
    std::vector<float> right(max_block);
    Stereo out;
    uint64_t engine_frame = 0;
    while (out.size() < num_frames) {
        const auto block = uint32_t(random() % (max_block + 1));
        const uint64_t block_end = bridge.host_frame() + block;
        const uint64_t end = engine_frame + bridge.engine_frames_needed(block);
        bridge.render(left.data(), right.data(), block, [&](float* frames, uint32_t count) {
            EXPECT_EQ(count % quantum, 0U);
            for (uint32_t i = 0; i < count; i++, engine_frame++) {
                frames[2 * i] = sample(engine_frame);
                frames[2 * i + 1] = sample(engine_frame + 2);
            }
            // What runs holds no event that the host's next block could still bring.
            EXPECT_LE(engine_frame, bridge.engine_time(block_end));
        });
        EXPECT_EQ(engine_frame, end);
        EXPECT_EQ(engine_frame, bridge.engine_frame());
        for (uint32_t i = 0; i < block; i++)
            out.emplace_back(left[i], right[i]);
    }
    out.resize(num_frames);
    return out;
}

// The centre of an impulse's answer, which is symmetric.
double centre_of(const Stereo& sound) {
    double sum = 0.0;
    double moment = 0.0;
    for (size_t i = 0; i < sound.size(); i++) {
        sum += double(sound[i].first);
        moment += double(sound[i].first) * double(i);
    }
    return moment / sum;
}

TEST(RateBridge, AnEventSoundsItsLatencyLaterToHalfAnEngineFrame) {
    for (const double rate : RATES) {
        for (const uint32_t quantum : {1U, 32U, 64U}) {
            for (const uint64_t event : {5000U, 5003U, 7321U}) {
                SCOPED_TRACE(testing::Message() << rate << " Hz, quantum " << quantum);
                RateBridge bridge;
                ASSERT_TRUE(bridge.activate(rate, quantum));
                const uint64_t frame = bridge.engine_time(event);
                const Stereo sound = play(bridge, quantum, event + 3000, 700,
                                          [&](uint64_t n) { return n == frame ? 1.0F : 0.0F; });
                const double expected = double(event + bridge.latency_frames());
                EXPECT_NEAR(centre_of(sound), expected, 0.501 * rate / 44100.0);
            }
        }
    }
}

TEST(RateBridge, LatencyIsTheLeastThatTheQuantumAllows) {
    const auto latency = [](double rate, uint32_t quantum) {
        RateBridge bridge;
        return bridge.activate(rate, quantum) ? int(bridge.latency_frames()) : -1;
    };
    EXPECT_EQ(latency(44100, 64), 63);
    EXPECT_EQ(latency(48000, 64), 121); // 2.52 ms
    EXPECT_EQ(latency(48000, 32), 86);
    EXPECT_EQ(latency(384000, 32), 692);
    EXPECT_EQ(latency(7, 32), -1);
}

TEST(RateBridge, BytesDoNotDependOnTheHostsBlocks) {
    const std::vector<float> sound = noise(60000);
    for (const double rate : RATES) {
        const auto played = [&](uint32_t max_block) {
            RateBridge bridge;
            EXPECT_TRUE(bridge.activate(rate, 32));
            EXPECT_EQ(play(bridge, 32, 100, 64, [](uint64_t) { return 1.0F; }).size(), 100U);
            bridge.reset();
            return play(bridge, 32, std::min<size_t>(size_t(rate), 40000), max_block,
                        [&](uint64_t n) { return sound[n % sound.size()]; });
        };
        const Stereo expected = played(1);
        for (const uint32_t max_block : {3U, 64U, 1001U, 16384U})
            EXPECT_TRUE(played(max_block) == expected) << rate << " Hz, " << max_block;
    }
}

TEST(RateBridge, TheEnginesOwnRatePassesUnchanged) {
    const std::vector<float> sound = noise(4000);
    RateBridge bridge;
    ASSERT_TRUE(bridge.activate(44100.0001, 64));
    const Stereo out = play(bridge, 64, 2000, 100, [&](uint64_t n) { return sound[n]; });
    for (size_t i = 0; i < out.size(); i++) {
        ASSERT_EQ(out[i].first, i < 63 ? 0.0F : sound[i - 63]);
        ASSERT_EQ(out[i].second, i < 63 ? 0.0F : sound[i - 61]);
    }
}

} // namespace
} // namespace tarquil
