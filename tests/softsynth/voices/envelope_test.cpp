// Envelope reference sequences, independent of how they are cut into blocks.

#include "softsynth/voices/envelope.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

struct Case {
    const char* name;
    uint32_t attack;
    float master;
    uint32_t release_at;
    uint32_t release;
    uint32_t cut_at;
    std::vector<double> expected; // the rest up to sample 15 is 0
};

const std::vector<Case> CASES = {
    {"simple",
     2,
     1,
     11,
     3,
     TIME_NEVER,
     {0, 0, 0, 0.5, 1, 0.875, 0.75, 0.625, 0.5, 0.5, 0.5, 0.5, 1.0 / 3, 0.5 / 3}},
    {"master level",
     2,
     0.5,
     11,
     3,
     TIME_NEVER,
     {0, 0, 0, 0.25, 0.5, 0.4375, 0.375, 0.3125, 0.25, 0.25, 0.25, 0.25, 0.5 / 3, 0.25 / 3}},
    {"aborted attack", 5, 1, 5, 4, TIME_NEVER, {0, 0, 0, 0.2, 0.4, 0.6, 0.45, 0.3, 0.15}},
    {"release at first attack sample", 2, 1, 3, 4, TIME_NEVER, {0, 0, 0, 0.5, 0.375, 0.25, 0.125}},
    {"release at last attack sample", 2, 1, 4, 4, TIME_NEVER, {0, 0, 0, 0.5, 1, 0.75, 0.5, 0.25}},
    {"aborted decay", 2, 1, 7, 2, TIME_NEVER, {0, 0, 0, 0.5, 1, 0.875, 0.75, 0.625, 0.3125}},
    {"release early in decay",
     2,
     1,
     6,
     4,
     TIME_NEVER,
     {0, 0, 0, 0.5, 1, 0.875, 0.75, 0.5625, 0.375, 0.1875}},
    {"release at last decay sample",
     2,
     1,
     8,
     4,
     TIME_NEVER,
     {0, 0, 0, 0.5, 1, 0.875, 0.75, 0.625, 0.5, 0.375, 0.25, 0.125}},
    {"note cut",
     2,
     1,
     11,
     3,
     10,
     {0, 0, 0, 0.5, 1, 0.875, 0.75, 0.625, 0.5, 0.5, 0.484375, 0.46875, 29.0 / 96, 14.0 / 96}},
};

TEST(Envelope, ReferenceSequencesDoNotDependOnTheBlocks) {
    constexpr uint32_t START = 3;
    constexpr uint32_t LENGTH = 16;
    for (const Case& c : CASES) {
        for (const uint32_t block : {1U, 2U, 3U, 4U, 8U, 16U}) {
            Envelope env;
            env_init(&env, START, c.attack, 4, 0.5F, c.release, c.master);
            float samples[LENGTH] = {};
            for (uint32_t t = 0; t < LENGTH; t += block) {
                const uint32_t end = std::min(t + block, LENGTH);
                if (c.release_at >= t && c.release_at < end)
                    env_set_release_time(&env, c.release_at);
                if (c.cut_at >= t && c.cut_at < end)
                    env_set_cut_time(&env, c.cut_at);
                if (end > START) // a voice never renders a block that ends before its note
                    env_render(&env, samples + t, t, end);
            }
            for (uint32_t i = 0; i < LENGTH; i++)
                EXPECT_NEAR(samples[i], i < c.expected.size() ? c.expected[i] : 0.0, 1e-6)
                    << c.name << ", block " << block << ", sample " << i;
        }
    }
}

TEST(Envelope, IsDoneAfterReleaseOrCutWhicheverComesFirst) {
    Envelope env;
    env_init(&env, 100, 10, 10, 0.5F, 1000, 1);
    EXPECT_GE(env_get_done_time(&env), TIME_NEVER);
    env_set_release_time(&env, 200);
    EXPECT_EQ(env_get_done_time(&env), 1200U);
    env_set_cut_time(&env, 300);
    EXPECT_EQ(env_get_done_time(&env), 332U);
}

TEST(EnvelopeDeathTest, RangeBeforeTheNoteAborts) {
    Envelope env;
    env_init(&env, 100, 10, 10, 0.5F, 1000, 1);
    float sample = 0;
    EXPECT_DEATH(env_render(&env, &sample, 99, 100),
                 "softsynth/voices/envelope.*env->attack_start_time < end_time");
}

TEST(Envelope, ItsPositionIsWhereItsSamplesAre) {
    Envelope env;
    env_init(&env, 1000, 2000, 4000, 0.25F, 3000, 0.5F);
    std::vector<float> samples(16000);
    for (const uint32_t release : {1500U, 5000U, 10000U}) {
        env_set_release_time(&env, release);
        env_render(&env, samples.data(), 0, 16000);
        for (uint32_t time = 1001; time < 15000; time += 37) {
            const EnvelopePosition position = env_position(env, time);
            // A step of the attack is 1 / 2000.
            EXPECT_NEAR(position.level * 0.5F, samples[time - 1], 0.0006) << release << " " << time;
            const EnvelopeStage stage = time >= release + 3000 ? EnvelopeStage::DONE
                                        : time >= release      ? EnvelopeStage::RELEASE
                                        : time >= 7000         ? EnvelopeStage::SUSTAIN
                                        : time >= 3000         ? EnvelopeStage::DECAY
                                                               : EnvelopeStage::ATTACK;
            EXPECT_EQ(position.stage, stage) << release << " " << time;
        }
        EXPECT_NEAR(env_position(env, release + 441).seconds, 0.01, 1e-6);
    }
}

} // namespace

} // namespace tarquil
