// Tests of the player: what the control side does reaches the sound, whole and only where it
// should.

#include "player/player.h"

#include <gtest/gtest.h>

#include "player/quantum_stream.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

class PlayerTest : public testing::Test {
  protected:
    PlayerTest() { player.start(); }

    void midi(unsigned status, unsigned data1, unsigned data2) {
        player.audio().follow_edits();
        const uint8_t message[] = {uint8_t(status), uint8_t(data1), uint8_t(data2)};
        ASSERT_TRUE(player.audio().add_message(message, player.audio().time()));
    }
    std::vector<float> render(uint32_t frames) {
        std::vector<float> sound(size_t(2) * frames);
        player.audio().run(sound.data(), frames);
        return sound;
    }
    uint32_t events_of_edits() {
        player.audio().follow_edits();
        return player.audio().num_queued_events();
    }

    Player player;
};

TEST_F(PlayerTest, AnEditOfAProgramSoundsOnItsChannelsOnlyAndOnlyWhereItDiffers) {
    midi(0xC3, 9, 0);
    render(64);
    Instrument instrument = player.get_instrument(9);
    instrument.set_name("renamed");
    player.set_instrument(9, instrument);
    EXPECT_EQ(events_of_edits(), 0U) << "a name";
    EXPECT_EQ(player.program_name(9), "renamed");

    instrument.set_controller(CTRL_PANNING, 3);
    instrument.set_controller(CTRL_PITCH_BEND_LSB, 5);
    player.set_instrument(9, instrument);
    EXPECT_EQ(events_of_edits(), 2U * (1 + 2)) << "on channels 3 and 9: a byte and both bends";
    player.set_instrument(100, instrument);
    EXPECT_EQ(events_of_edits(), 6U) << "nobody plays it";
    EXPECT_EQ(player.get_instrument(100).get_controller(CTRL_PANNING), 3);
}

TEST_F(PlayerTest, WhatMidiHasSetOutlivesEditsOfTheProgram) {
    const auto play = [](bool edit) {
        Player one;
        one.start();
        const auto send = [&](unsigned status, unsigned data1, unsigned data2) {
            one.audio().follow_edits();
            const uint8_t message[] = {uint8_t(status), uint8_t(data1), uint8_t(data2)};
            one.audio().add_message(message, one.audio().time());
        };
        std::vector<float> sound(512);
        one.audio().run(sound.data(), 256);
        send(0xB0, CTRL_MAIN_VOLUME, 20);
        if (edit) {
            Instrument changed = one.get_instrument(0);
            changed.set_name("other");
            one.set_instrument(0, changed);
            one.set_instrument(77, Instrument());
        }
        send(0x90, 60, 100);
        one.audio().run(sound.data(), 256);
        return sound;
    };
    EXPECT_EQ(play(true), play(false));
    EXPECT_GT(peak(play(true)), 0.0F);
}

TEST_F(PlayerTest, StatesComeBackInAPlayerThatPlaysAnother) {
    const std::string fresh = player.save_state();
    EXPECT_NE(fresh.find("channel_programs = 0 1 2"), std::string::npos);
    midi(0xC5, 40, 0);
    player.set_edited_program(40);
    player.set_controller(CTRL_PANNING, 1);
    player.set_controller(CTRL_REVERB_WET, 99);
    render(64);
    const std::string other = player.save_state();
    EXPECT_NE(other, fresh);
    for (const std::string& state : {fresh, other, fresh}) {
        ASSERT_EQ(player.load_state(state), 0);
        render(64);
        EXPECT_EQ(player.save_state(), state);
    }
    // A bank says nothing of channels: they play the usual programs.
    ASSERT_EQ(player.load_state(other), 0);
    std::string bank;
    player.get_bank().text_save_to_string(bank);
    ASSERT_EQ(player.load_state(bank), 0);
    EXPECT_EQ(player.channel_program(5), 5U);
    EXPECT_NE(player.load_state("nonsense"), 0);
    EXPECT_EQ(player.channel_program(5), 5U);
}

TEST_F(PlayerTest, BanksThatReplaceEachOtherBeforeAnyIsHeardEndAsTheLast) {
    Player expected;
    expected.start();
    TarqSettings bank = player.get_bank();
    for (int byte = 1; byte < 60; byte++) {
        bank.get_instrument(0).set_controller(CTRL_OSC1_COARSE_TUNE, byte);
        player.set_bank(bank);
        player.set_controller(CTRL_PANNING, byte);
        if (byte % 16 == 0)
            render(64);
    }
    bank = player.get_bank();
    EXPECT_EQ(bank.get_instrument(0).get_controller(CTRL_PANNING), 59);
    expected.set_bank(bank);
    std::vector<float> wanted(1024);
    const uint8_t note[] = {0x90, 60, 100};
    render(64);
    expected.audio().run(wanted.data(), 256);
    for (int rest = 0; rest < 2; rest++)
        expected.audio().run(wanted.data(), 64);
    while (expected.audio().time() < player.audio().time())
        expected.audio().run(wanted.data(), 64);
    while (player.audio().time() < expected.audio().time())
        render(64);
    midi(0x90, 60, 100);
    expected.audio().add_message(note, expected.audio().time());
    expected.audio().run(wanted.data(), 512);
    EXPECT_EQ(render(512), wanted);
    EXPECT_GT(peak(wanted), 0.0F);
}

TEST_F(PlayerTest, EditsWithoutEndLoseNothing) {
    for (int round = 0; round < 3; round++) {
        for (int i = 0; i < 6000; i++)
            player.set_controller(CTRL_PANNING, i % 128);
        player.set_channel_program(2, 50);
        player.set_controller(CTRL_AUX1_LEVEL, 100 + round);
    }
    render(64);
    Player other;
    other.set_controller(CTRL_PANNING, 5999 % 128);
    other.set_controller(CTRL_AUX1_LEVEL, 102);
    other.set_channel_program(2, 50);
    other.start();
    std::vector<float> wanted(128);
    other.audio().run(wanted.data(), 64);
    midi(0x90, 60, 100);
    other.audio().follow_edits();
    const uint8_t note[] = {0x90, 60, 100};
    other.audio().add_message(note, other.audio().time());
    wanted.resize(1024);
    other.audio().run(wanted.data(), 512);
    EXPECT_EQ(render(512), wanted);
}

TEST_F(PlayerTest, SilenceEndsAllThatSoundsEvenWhenTheQueueIsFull) {
    for (const bool is_full : {false, true}) {
        player.set_controller(CTRL_REVERB_ROOMSIZE, 127);
        for (const unsigned channel : {0U, 15U}) {
            midi(0xB0U | channel, CTRL_AUX1_LEVEL, 127);
            midi(0x90U | channel, 60, 100);
        }
        EXPECT_GT(peak(render(2048)), 0.01F);
        const uint8_t later[] = {0xB0, CTRL_PANNING, 64};
        while (is_full && player.audio().add_message(later, player.audio().time() + 100)) {
        }
        player.silence();
        for (int block = 0; block < 4; block++) // the master's high-passes ring on
            render(2048);
        EXPECT_LT(peak(render(2048)), 1e-3F) << is_full;
        EXPECT_LT(peak(render(2048)), 1e-3F) << is_full;
        player.meters().watched = true;
        render(64);
        EXPECT_EQ(player.meters().voices.load(), 0) << is_full;
    }
}

TEST(Player, TheClockStandsStillUntilThereIsAnEngine) {
    Player player;
    float pcm[128];
    const uint8_t note[] = {0x90, 60, 100};
    player.audio().add_message(note, 10);
    player.audio().run(pcm, 64);
    EXPECT_EQ(player.audio().time(), 0U);
    player.start();
    player.audio().run(pcm, 64);
    EXPECT_EQ(player.audio().time(), 64U);
    EXPECT_NE(pcm[127], 0.0F) << "the note was not lost";
}

TEST(Player, AutomationChangesTheEditedProgramAtItsTime) {
    Player player;
    player.start();
    player.set_edited_program(6);
    player.audio().follow_edits();
    player.audio().set_controller(CTRL_PANNING, 17, 40);
    EXPECT_EQ(player.get_controller(CTRL_PANNING), 17);
    EXPECT_EQ(player.get_instrument(6).get_controller(CTRL_PANNING), 17);
    player.audio().set_controller(CTRL_REVERB_WET, 18, 41);
    EXPECT_EQ(player.get_controller(CTRL_REVERB_WET), 18);
    EXPECT_EQ(player.get_bank().get_global_controller(CTRL_REVERB_WET), 18);
}

// A melody with moving controls, cut into blocks of random lengths.
std::vector<float> play_in_blocks(double rate, uint32_t seed, MidiDialect dialect) {
    Player player;
    player.set_dialect(dialect);
    player.start();
    QuantumStream stream(player.audio());
    EXPECT_TRUE(stream.activate(rate));
    uint32_t random = seed;
    constexpr uint32_t FRAMES = 20000;
    std::vector<float> sound(size_t(2) * FRAMES);
    for (uint32_t done = 0; done < FRAMES;) {
        random = random * 1664525U + 1013904223U;
        const uint32_t block = std::min(FRAMES - done, seed == 0 ? FRAMES : 1 + (random >> 22U));
        player.audio().follow_edits();
        for (uint32_t frame = done; frame < done + block; frame++) {
            if (frame % 1711 == 0) {
                const uint8_t note[] = {0x90, uint8_t(40 + frame % 37), 100};
                player.audio().add_message(note, stream.event_time(frame - done));
            }
            if (frame % 97 == 0)
                player.audio().set_controller(CTRL_FILTER1_CUTOFF, int(frame / 97 % 128),
                                              stream.event_time(frame - done));
            if (frame % 5003 == 0) {
                const uint8_t change[] = {0xC0, uint8_t(frame % 7), 0};
                player.audio().add_message(change, stream.event_time(frame - done));
                const uint8_t modulation[] = {0xB0, 1, uint8_t(frame % 127)};
                player.audio().add_message(modulation, stream.event_time(frame - done));
                const uint8_t balance[] = {0xF0, 0x7F, 0x7F, 4, 2, 0, uint8_t(frame % 127), 0xF7};
                player.audio().add_exclusive(balance, stream.event_time(frame - done));
            }
        }
        stream.render(&sound[done], &sound[FRAMES + done], block);
        done += block;
    }
    return sound;
}

TEST(Player, BytesDoNotDependOnTheHostsBlocks) {
    for (const MidiDialect dialect : {MidiDialect::NATIVE, MidiDialect::GENERAL_MIDI}) {
        for (const double rate : {44100.0, 48000.0, 22050.0}) {
            const std::vector<float> whole = play_in_blocks(rate, 0, dialect);
            EXPECT_GT(peak(whole), 0.01F);
            for (const uint32_t seed : {1U, 2U})
                EXPECT_EQ(play_in_blocks(rate, seed, dialect), whole) << rate << " seed " << seed;
        }
    }
}

// What a scope shows is what is played; looking changes no sample and costs nothing afterwards.
TEST_F(PlayerTest, TheOutputIsKeptForAScope) {
    Player other; // nobody looks
    other.start();
    Meters& meters = player.meters();
    meters.watched = true;
    std::vector<float> left(512);
    std::vector<float> right(512);
    for (const OutputWatch watch : {OutputWatch::WHOLE, OutputWatch::PROGRAM}) {
        player.watch_output(watch);
        for (const unsigned status : {0x90U, 0x93U}) {
            midi(status, 60 + unsigned(watch), 100);
            other.audio().follow_edits();
            const uint8_t message[] = {uint8_t(status), uint8_t(60 + unsigned(watch)), 100};
            other.audio().add_message(message, other.audio().time());
        }
        const std::vector<float> sound = render(512);
        std::vector<float> unwatched(1024);
        other.audio().run(unwatched.data(), 512);
        EXPECT_TRUE(sound == unwatched);
        ASSERT_TRUE(meters.output.read(left, right));
        float difference = 0.0F;
        for (size_t i = 0; i < 512; i++)
            difference = std::max(difference, std::fabs(sound[2 * i] - left[i]));
        if (watch == OutputWatch::WHOLE)
            EXPECT_EQ(difference, 0.0F);
        else
            EXPECT_GT(difference, 0.01F) << "channel 4 plays another program";
        EXPECT_GT(peak(left), 0.01F);
        NoteView note;
        ASSERT_TRUE(meters.note.read(note));
        EXPECT_EQ(note.note, 60 + unsigned(watch));
    }
    player.set_edited_program(100);
    render(512);
    ASSERT_TRUE(meters.output.read(left, right));
    EXPECT_EQ(peak(left), 0.0F) << "no channel plays it";
    player.watch_output(OutputWatch::NOTHING);
    const uint32_t count = meters.output.count();
    render(512);
    EXPECT_EQ(meters.output.count(), count);
}

} // namespace

} // namespace tarquil
