// Tests of the tempo that VST 3 hosts tell.

#include <gtest/gtest.h>

#include "tests/formats/common/tempo_song.h"
#include "tests/formats/vst3/vst3_host.h"

namespace tarquil::vst3 {

namespace {

// Of a host that does not say all.
StereoSound song_without(uint32_t hidden_flags) {
    Vst3Host host(48000, following_state());
    ProcessContext context{};
    return render_tempo_song(
        [&](uint32_t frame) {
            context = context_at(frame, 48000);
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

TEST(Vst3Tempo, OnlyWhatTheHostKnowsCounts) {
    const StereoSound followed = hosted_tempo_song(48000);
    EXPECT_NE(followed.hash(), song_without(HAS_TEMPO).hash());
    EXPECT_NE(followed.hash(), song_without(IS_PLAYING).hash());
    EXPECT_EQ(song_without(IS_PLAYING).hash(), song_without(HAS_POSITION).hash());
}

} // namespace

} // namespace tarquil::vst3
