// Tests of the tempo that VST 3 hosts tell.

#include <gtest/gtest.h>

#include "tests/formats/common/tempo_song.h"
#include "tests/formats/vst3/vst3_host.h"

namespace tarquil::vst3 {

namespace {

ProcessContext context_at(uint32_t frame, double rate) {
    ProcessContext context{};
    context.state = IS_PLAYING | HAS_POSITION | HAS_TEMPO | HAS_BAR | HAS_TIME_SIGNATURE;
    context.rate = rate;
    context.position_quarters = position_at(frame, rate);
    context.bar_quarters = bar_start_at(frame, rate);
    context.quarters_per_minute = tempo_at(frame);
    context.time_signature_beats = int32_t(BEATS_PER_BAR);
    context.time_signature_unit = 4;
    return context;
}

StereoSound song(double rate, uint32_t hidden_flags = 0) {
    Vst3Host host(rate, following_state());
    ProcessContext context{};
    return render_tempo_song(
        [&](uint32_t frame) {
            context = context_at(frame, rate);
            context.state &= ~hidden_flags;
            host.context = &context;
        },
        [&](const auto& messages, float* left, float* right, uint32_t frames) {
            for (const SongMessage& message : messages)
                host.add_message(int32_t(message.frame), message.bytes[0], message.bytes[1],
                                 message.bytes[2]);
            host.run(left, right, int32_t(frames));
        });
}

TEST(Vst3Tempo, ASongFollowsTheHost) {
    const StereoSound followed = song(48000);
    EXPECT_EQ(followed.hash(), hosted_tempo_song(48000).hash());
    EXPECT_NE(followed.hash(), song(48000, HAS_TEMPO).hash());
    EXPECT_NE(followed.hash(), song(48000, IS_PLAYING).hash());
    EXPECT_EQ(song(48000, IS_PLAYING).hash(), song(48000, HAS_POSITION).hash());
}

TEST(Vst3Tempo, TheHostIsAskedForWhatIsUsed) {
    Vst3Host host(44100);
    const Held<ProcessContextRequirements> requirements(host.component);
    ASSERT_TRUE(requirements);
    EXPECT_EQ(requirements->get_requirements(), NEEDS_POSITION | NEEDS_BAR | NEEDS_TEMPO |
                                                    NEEDS_TIME_SIGNATURE | NEEDS_TRANSPORT_STATE);
}

} // namespace

} // namespace tarquil::vst3
