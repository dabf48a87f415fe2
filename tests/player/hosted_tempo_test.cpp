// Tests of a host's tempo on its way to the engine.

#include <gtest/gtest.h>

#include "tests/formats/common/tempo_song.h"

namespace tarquil {

namespace {

TEST(HostedTempo, OnlyABankThatWantsItFollowsAndItsStateSaysSo) {
    const StereoSound followed = hosted_tempo_song(44100);
    const std::string plain = following_state(false);
    EXPECT_NE(followed, hosted_tempo_song(44100, plain));
    // Without the switch a host's tempo changes no bit.
    EXPECT_EQ(hosted_tempo_song(44100, plain), hosted_tempo_song(44100, plain, false));
    EXPECT_EQ(plain.find("tempo_sync"), std::string::npos);

    HostedPlayer player;
    EXPECT_FALSE(player.player().tempo_sync());
    EXPECT_EQ(player.load_state(following_state()), 0);
    EXPECT_TRUE(player.player().tempo_sync());
    EXPECT_NE(player.save_state().find("tempo_sync = on\n"), std::string::npos);
    EXPECT_EQ(hosted_tempo_song(44100, player.save_state()), followed);
    player.player().set_tempo_sync(false);
    EXPECT_EQ(player.save_state().find("tempo_sync"), std::string::npos);
    EXPECT_EQ(hosted_tempo_song(44100, player.save_state()), hosted_tempo_song(44100, plain));
}

TEST(HostedTempo, TheSameBytesHoweverBlocksAreCutAndHowOftenTheHostSpeaks) {
    const std::string state = following_state();
    const auto song = [&](double rate, const std::vector<uint32_t>& blocks, bool speaks_once) {
        HostedPlayer player;
        player.load_state(state);
        EXPECT_TRUE(player.activate(rate));
        uint32_t begin = 0;
        return render_song(
            blocks, [&](const auto& all, float* left, float* right, uint32_t frames) {
                const std::vector<SongMessage> messages = only_notes(all);
                player.begin_block(left, right, frames);
                if (begin == 0 || !speaks_once)
                    player.set_tempo(host_tempo_at(begin, rate), 0);
                size_t next = 0;
                const bool has_change = TEMPO_CHANGE >= begin && TEMPO_CHANGE < begin + frames;
                const auto play_until = [&](uint32_t frame) {
                    for (; next < messages.size() && messages[next].frame < frame; next++)
                        player.add_message(messages[next].bytes, messages[next].frame);
                };
                if (has_change) {
                    play_until(TEMPO_CHANGE - begin);
                    player.set_tempo(host_tempo_at(TEMPO_CHANGE, rate), TEMPO_CHANGE - begin);
                }
                play_until(frames);
                player.end_block();
                begin += frames;
            });
    };
    for (const double rate : {44100.0, 48000.0}) {
        const StereoSound whole = song(rate, {SONG_FRAMES}, true);
        EXPECT_EQ(whole.hash(), hosted_tempo_song(rate).hash()) << rate;
        for (const uint32_t length : {17U, 64U, 1024U})
            EXPECT_EQ(song(rate, song_blocks(length, false), false).hash(), whole.hash())
                << rate << " Hz, blocks of " << length;
        EXPECT_EQ(song(rate, song_blocks(700, true, 3), false).hash(), whole.hash()) << rate;
    }
}

TEST(HostedTempo, GeneralMidiFollowsToo) {
    const auto song = [](bool follows) {
        InstancePlayer player;
        player.player().set_tempo_sync(follows);
        player.player().set_controller(CTRL_RETRIGGER_SPEEDUP, 65);
        player.player().set_controller(CTRL_RETRIGGER_WET_LEVEL, 100);
        return hosted_tempo_song(44100, player.save_state());
    };
    EXPECT_NE(song(true), song(false));
}

} // namespace

} // namespace tarquil
