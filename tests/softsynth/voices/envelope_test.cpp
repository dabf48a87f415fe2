// Where an envelope is and when it is done; golden scenes and recorded sequences have its samples.

#include "softsynth/voices/envelope.h"

#include <gtest/gtest.h>

#include <vector>

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

TEST(Envelope, IsDoneAfterReleaseOrCutWhicheverComesFirst) {
    Envelope env;
    env_init(&env, 100, 10, 10, 0.5F, 1000, 1);
    EXPECT_GE(env_get_done_time(&env), TIME_NEVER);
    env_set_release_time(&env, 200);
    EXPECT_EQ(env_get_done_time(&env), 1200U);
    env_set_cut_time(&env, 300);
    EXPECT_EQ(env_get_done_time(&env), 332U);
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
