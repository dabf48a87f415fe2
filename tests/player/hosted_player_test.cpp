// Tests of the player as plug-in formats use it; tests/formats/every cuts its blocks.

#include "player/hosted_player.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/formats/common/format_song.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

class HostedPlayerTest : public testing::Test {
  protected:
    HostedPlayerTest() { EXPECT_TRUE(hosted.activate(44100)); }

    void begin(uint32_t frames) {
        sound = {std::vector<float>(frames), std::vector<float>(frames)};
        hosted.begin_block(sound.left.data(), sound.right.data(), frames);
    }
    void play(unsigned status, unsigned data1, unsigned data2, uint32_t frame = 0) {
        const uint8_t message[] = {uint8_t(status), uint8_t(data1), uint8_t(data2)};
        EXPECT_TRUE(hosted.add_message(message, frame));
    }
    const StereoSound& end() {
        hosted.end_block();
        return sound;
    }
    StereoSound render(uint32_t frames) {
        begin(frames);
        return end();
    }

    HostedPlayer hosted;
    StereoSound sound;
};

TEST_F(HostedPlayerTest, FramesOutOfOrderOrBeyondTheBlockCountAsTheNearest) {
    const auto one_note = [](std::initializer_list<uint32_t> frames) {
        HostedPlayer player;
        EXPECT_TRUE(player.activate(44100));
        StereoSound heard{std::vector<float>(2048), std::vector<float>(2048)};
        player.begin_block(heard.left.data(), heard.right.data(), 1024);
        unsigned key = 60;
        for (const uint32_t frame : frames) {
            const uint8_t message[] = {0x90, uint8_t(key++), 100};
            player.add_message(message, frame);
        }
        player.end_block();
        player.begin_block(heard.left.data() + 1024, heard.right.data() + 1024, 1024);
        player.end_block();
        return heard;
    };
    EXPECT_EQ(one_note({500, 20, 700}), one_note({500, 500, 700}));
    EXPECT_EQ(one_note({10, 5000}), one_note({10, 1023}));
    EXPECT_EQ(one_note({UINT32_MAX, 3}), one_note({1023, 1023}));
    EXPECT_NE(one_note({500, 20, 700}), one_note({20, 500, 700}));
}

TEST_F(HostedPlayerTest, MoreMessagesThanTheQueueHoldsLoseNothing) {
    // The last value of 40,000, more than twice what the queue holds.
    const auto after = [](uint32_t num_messages) {
        HostedPlayer player;
        EXPECT_TRUE(player.activate(44100));
        StereoSound heard{std::vector<float>(4096), std::vector<float>(4096)};
        player.begin_block(heard.left.data(), heard.right.data(), 4096);
        const uint8_t note[] = {0x90, 60, 100};
        player.add_message(note, 0);
        for (uint32_t i = 0; i < num_messages; i++) {
            const uint8_t message[] = {0xB0, CTRL_PANNING, uint8_t(i == num_messages - 1 ? 0 : 64)};
            EXPECT_TRUE(player.add_message(message, i * 3000 / num_messages));
        }
        player.end_block();
        return heard;
    };
    const StereoSound many = after(40000);
    const float left = peak({many.left.end() - 500, many.left.end()});
    EXPECT_GT(left, 0.01F);
    EXPECT_LT(peak({many.right.end() - 500, many.right.end()}), 0.02F * left)
        << "panned to the left";
}

TEST_F(HostedPlayerTest, AParameterAfterALoadIsOfTheLoadedBank) {
    HostedPlayer other;
    other.player().set_controller(CTRL_PANNING, 7);
    render(64);
    ASSERT_EQ(hosted.load_state(other.save_state()), 0);
    begin(64);
    EXPECT_EQ(hosted.get_controller(CTRL_PANNING), 7);
    hosted.set_controller(CTRL_PANNING, 100, 3);
    end();
    render(64);
    EXPECT_EQ(hosted.player().get_controller(CTRL_PANNING), 100);
    EXPECT_EQ(hosted.get_controller(CTRL_PANNING), 100);
}

TEST_F(HostedPlayerTest, AResetLeavesNoNoteAndNoMessage) {
    begin(30);
    play(0xB0, CTRL_PANNING, 0);
    play(0x90, 60, 127, 10);
    play(0x91, 64, 127, 29); // still on its way
    end();
    hosted.reset();
    render(10 * 44100);
    EXPECT_EQ(peak(render(4096).left), 0.0F) << "everything has been released";
    begin(4096);
    play(0x90, 60, 127);
    end();
    EXPECT_GT(peak(sound.right), 0.0F) << "panned as the program is";
}

TEST_F(HostedPlayerTest, MessagesThatAreNoneOfTheEnginesDoNothing) {
    const uint8_t sysex[] = {0xF0, 0x7E, 0x7F, 9, 1, 0xF7};
    begin(256);
    EXPECT_TRUE(hosted.add_message(sysex, 0));
    EXPECT_TRUE(hosted.add_message({}, 0));
    EXPECT_TRUE(hosted.add_message(std::span(sysex).first(1), 0));
    play(0x90, 200, 100);
    play(0x90, 60, 200);
    play(0xC0, 128, 0);
    end();
    EXPECT_EQ(peak(render(1024).left), 0.0F);
    const uint8_t change[] = {0xC4, 77};
    begin(16);
    hosted.add_message(change, 0);
    end();
    EXPECT_EQ(hosted.player().channel_program(4), 77U) << "two bytes are a whole program change";
}

TEST_F(HostedPlayerTest, AnExclusiveMessageActsOnItsFrame) {
    const auto play = [](uint32_t frame) {
        HostedPlayer player;
        player.player().set_dialect(MidiDialect::GENERAL_MIDI);
        EXPECT_TRUE(player.activate(44100));
        StereoSound heard{std::vector<float>(4096), std::vector<float>(4096)};
        player.begin_block(heard.left.data(), heard.right.data(), 4096);
        const uint8_t note[] = {0x90, 60, 100};
        player.add_message(note, 0);
        const uint8_t silence[] = {0xF0, 0x7F, 0x7F, 4, 1, 0, 0, 0xF7}; // master volume
        player.add_message(silence, frame);
        player.end_block();
        return heard;
    };
    const StereoSound early = play(1000);
    const StereoSound late = play(3000);
    EXPECT_GT(peak({late.left.begin() + 2000, late.left.begin() + 3000}),
              10 * peak({early.left.begin() + 2000, early.left.begin() + 3000}));
}

TEST_F(HostedPlayerTest, RatesBeyondReasonAreRefusedAndChangeNothing) {
    for (const double rate : {0.0, -44100.0, 1e9, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()})
        EXPECT_FALSE(hosted.activate(rate)) << rate;
    begin(4096);
    play(0x90, 60, 127);
    EXPECT_GT(peak(end().left), 0.0F);
    EXPECT_EQ(hosted.latency_frames(), 63U);
}

TEST_F(HostedPlayerTest, AResetEndsGeneralMidisNotesAndForgetsItsMessages) {
    hosted.player().set_dialect(MidiDialect::GENERAL_MIDI);
    begin(64);
    play(0xB0, 64, 127);
    play(0x90, 60, 100);
    EXPECT_GT(peak(render(640).left), 0.001F);
    begin(64);
    const uint8_t silence[] = {0xF0, 0x7F, 0x7F, 4, 1, 0, 0, 0xF7}; // master volume
    EXPECT_TRUE(hosted.add_message(silence, 0));
    end();
    hosted.reset();
    render(44100 * 8);
    EXPECT_LT(peak(render(640).left), 1e-4F);
    EXPECT_EQ(hosted.player().audio().ensemble()->voices(), 0U);
    begin(640);
    play(0x90, 62, 100);
    EXPECT_GT(peak(end().left), 0.001F);
}

} // namespace

} // namespace tarquil
