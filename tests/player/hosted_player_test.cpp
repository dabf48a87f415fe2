// Tests of the player as plug-in formats use it; tests/formats/every cuts its blocks.

#include "player/hosted_player.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
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

    // What a new player gives of a block with these messages, and of one without.
    using Messages = std::function<void(HostedPlayer& player)>;
    static StereoSound heard(uint32_t frames, const Messages& send,
                             MidiDialect dialect = MidiDialect::NATIVE) {
        HostedPlayer player;
        player.player().set_dialect(dialect);
        EXPECT_TRUE(player.activate(44100));
        StereoSound all{std::vector<float>(2 * frames), std::vector<float>(2 * frames)};
        player.begin_block(all.left.data(), all.right.data(), frames);
        send(player);
        player.end_block();
        player.begin_block(all.left.data() + frames, all.right.data() + frames, frames);
        player.end_block();
        return all;
    }

    static constexpr uint8_t NOTE[] = {0x90, 60, 100};
    static constexpr uint8_t VOLUME_0[] = {0xF0, 0x7F, 0x7F, 4, 1, 0, 0, 0xF7}; // the master's
    HostedPlayer hosted;
    StereoSound sound;
};

TEST_F(HostedPlayerTest, FramesOutOfOrderOrBeyondTheBlockCountAsTheNearest) {
    const auto one_note = [](std::initializer_list<uint32_t> frames) {
        return heard(1024, [frames](HostedPlayer& player) {
            uint8_t key = 60;
            for (const uint32_t frame : frames)
                player.add_message(std::array<uint8_t, 3>{0x90, key++, 100}, frame);
        });
    };
    EXPECT_EQ(one_note({500, 20, 700}), one_note({500, 500, 700}));
    EXPECT_EQ(one_note({10, 5000}), one_note({10, 1023}));
    EXPECT_EQ(one_note({UINT32_MAX, 3}), one_note({1023, 1023}));
    EXPECT_NE(one_note({500, 20, 700}), one_note({20, 500, 700}));
}

TEST_F(HostedPlayerTest, MoreMessagesThanTheQueueHoldsLoseNothing) {
    // The last value of 40,000, more than twice what the queue holds.
    constexpr uint32_t COUNT = 40000;
    const StereoSound many = heard(2048, [](HostedPlayer& player) {
        player.add_message(NOTE, 0);
        for (uint32_t i = 1; i <= COUNT; i++) {
            const std::array<uint8_t, 3> pan{0xB0, CTRL_PANNING, uint8_t(i == COUNT ? 0 : 64)};
            EXPECT_TRUE(player.add_message(pan, i * 1500 / COUNT));
        }
    });
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
    for (const MidiDialect dialect : {MidiDialect::NATIVE, MidiDialect::GENERAL_MIDI}) {
        const bool is_gm = dialect == MidiDialect::GENERAL_MIDI;
        hosted.player().set_dialect(dialect);
        begin(30);
        play(0xB0, is_gm ? 64U : unsigned(CTRL_PANNING), is_gm ? 127 : 0);
        play(0x90, 60, 127, 10);
        end();
        EXPECT_GT(peak(render(640).left), 0.001F);
        begin(30);
        EXPECT_TRUE(hosted.add_message(VOLUME_0, 0));
        play(0x91, 64, 127, 29); // still on its way
        end();
        hosted.reset();
        render(10 * 44100);
        const float rest = peak(render(4096).left);
        EXPECT_TRUE(is_gm ? rest < 1e-4F : rest == 0.0F) << "everything has been released";
        begin(4096);
        play(0x90, 60, 127);
        end();
        EXPECT_GT(peak(sound.right), 0.001F) << "panned as the program is";
    }
    EXPECT_GT(hosted.player().audio().ensemble()->voices(), 0U);
    hosted.reset();
    render(8 * 44100);
    EXPECT_EQ(hosted.player().audio().ensemble()->voices(), 0U);
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
        return heard(
            4096,
            [frame](HostedPlayer& player) {
                player.add_message(NOTE, 0);
                player.add_message(VOLUME_0, frame);
            },
            MidiDialect::GENERAL_MIDI);
    };
    const StereoSound early = play(1000);
    const StereoSound late = play(3000);
    EXPECT_GT(peak({late.left.begin() + 2000, late.left.begin() + 3000}),
              10 * peak({early.left.begin() + 2000, early.left.begin() + 3000}));
}

} // namespace

} // namespace tarquil
