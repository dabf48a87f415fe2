// Tests of the player: what the control side does reaches the sound, whole and only where it
// should.

#include <gtest/gtest.h>

#include "tests/support/player_host.h"

namespace tarquil {

namespace {

TEST(Player, AnEditOfAProgramSoundsOnItsChannelsOnlyAndOnlyWhereItDiffers) {
    PlayerHost player;
    player.midi(0xC3, 9);
    player.render(64);
    Instrument instrument = player->get_instrument(9);
    instrument.set_name("renamed");
    player->set_instrument(9, instrument);
    EXPECT_EQ(player.num_queued(), 0U) << "a name";
    EXPECT_EQ(player->program_name(9), "renamed");

    instrument.set_controller(CTRL_PANNING, 3);
    instrument.set_controller(CTRL_PITCH_BEND_LSB, 5);
    player->set_instrument(9, instrument);
    EXPECT_EQ(player.num_queued(), 2U * (1 + 2)) << "on channels 3 and 9: a byte and both bends";
    player->set_instrument(100, instrument);
    EXPECT_EQ(player.num_queued(), 6U) << "nobody plays it";
    EXPECT_EQ(player->get_instrument(100).get_controller(CTRL_PANNING), 3);
}

TEST(Player, TheSelectedChannelIsKeptWhereItIsNotTheUsualOne) {
    Player player;
    player.set_channel_program(9, 40);
    player.set_channel_program(3, 40);
    player.set_edited_program(40);
    player.set_selected_channel(3);
    const std::string usual = player.save_state_compact();
    EXPECT_EQ(usual.find("selected_channel"), std::string::npos);
    player.set_selected_channel(9);
    const std::string other = player.save_state_compact();
    for (const auto& [state, channel] :
         {std::pair(other, 9U), {usual, 3U}, {other + "selected_channel = 16\n", 3U}}) {
        Player loaded;
        ASSERT_EQ(loaded.load_state(state), 0);
        EXPECT_EQ(loaded.selected_channel(), channel);
        EXPECT_EQ(loaded.get_bank().get_kept_lines(), KeptLines()) << "no line of the bank's";
    }
}

TEST(Player, WhatMidiHasSetOutlivesEditsOfTheProgram) {
    const auto play = [](bool edit) {
        PlayerHost player;
        player.render(256);
        player.midi(0xB0, CTRL_MAIN_VOLUME, 20);
        if (edit) {
            Instrument changed = player->get_instrument(0);
            changed.set_name("other");
            player->set_instrument(0, changed);
            player->set_instrument(77, Instrument());
        }
        player.midi(0x90, 60, 100);
        return player.render(256);
    };
    EXPECT_EQ(play(true), play(false));
    EXPECT_GT(peak(play(true)), 0.0F);
}

TEST(Player, StatesComeBackInAPlayerThatPlaysAnother) {
    PlayerHost player;
    const std::string fresh = player->save_state();
    EXPECT_NE(fresh.find("channel_programs = 0 1 2"), std::string::npos);
    player.midi(0xC5, 40);
    player->set_edited_program(40);
    player->set_controller(CTRL_PANNING, 1);
    player->set_controller(CTRL_REVERB_WET, 99);
    player.render(64);
    const std::string other = player->save_state();
    EXPECT_NE(other, fresh);
    for (const std::string& state : {fresh, other, fresh}) {
        ASSERT_EQ(player->load_state(state), 0);
        player.render(64);
        EXPECT_EQ(player->save_state(), state);
    }
    // A bank says nothing of channels: they play the usual programs.
    ASSERT_EQ(player->load_state(other), 0);
    std::string bank;
    player->get_bank().text_save_to_string(bank);
    ASSERT_EQ(player->load_state(bank), 0);
    EXPECT_EQ(player->channel_program(5), 5U);
    EXPECT_EQ(player->load_state(bank + "channel_programs = 1 2 999\n"), 0) << "a damaged list";
    EXPECT_EQ(player->channel_program(5), 5U);
    EXPECT_NE(player->load_state("nonsense"), 0);
    EXPECT_EQ(player->channel_program(5), 5U);
}

TEST(Player, BanksThatReplaceEachOtherBeforeAnyIsHeardEndAsTheLast) {
    PlayerHost player;
    TarqSettings bank = player->get_bank();
    for (int byte = 1; byte < 60; byte++) {
        bank.get_instrument(0).set_controller(CTRL_OSC1_COARSE_TUNE, byte);
        player->set_bank(bank);
        player->set_controller(CTRL_PANNING, byte);
        if (byte % 16 == 0)
            player.render(64);
    }
    bank = player->get_bank();
    EXPECT_EQ(bank.get_instrument(0).get_controller(CTRL_PANNING), 59);
    PlayerHost expected;
    expected->set_bank(bank);
    expected.render(256);
    player.render(64);
    for (PlayerHost* each : {&player, &expected})
        each->midi(0x90, 60, 100);
    const std::vector<float> wanted = expected.render(512);
    EXPECT_EQ(player.render(512), wanted);
    EXPECT_GT(peak(wanted), 0.0F);
}

TEST(Player, BandsThatAreMutedBeforeTheStartAreMuted) {
    PlayerHost player(false);
    for (unsigned band = 0; band < MC_N_BANDS; band++)
        player->set_band_muted(band, true);
    player->start();
    player.midi(0x90, 60, 100);
    EXPECT_EQ(peak(player.render(2048)), 0.0F);
    player->set_band_muted(1, false);
    for (unsigned band = 0; band < MC_N_BANDS; band++)
        EXPECT_EQ(player->is_band_muted(band), band != 1);
    EXPECT_GT(peak(player.render(2048)), 0.001F);
}

TEST(Player, EditsWithoutEndLoseNothing) {
    PlayerHost player;
    for (int round = 0; round < 3; round++) {
        for (int i = 0; i < 6000; i++)
            player->set_controller(CTRL_PANNING, i % 128);
        player->set_channel_program(2, 50);
        player->set_controller(CTRL_AUX1_LEVEL, 100 + round);
    }
    PlayerHost other(false);
    other->set_controller(CTRL_PANNING, 5999 % 128);
    other->set_controller(CTRL_AUX1_LEVEL, 102);
    other->set_channel_program(2, 50);
    other->start();
    for (PlayerHost* each : {&player, &other}) {
        each->render(64);
        each->midi(0x90, 60, 100);
    }
    EXPECT_EQ(player.render(512), other.render(512));
}

TEST(Player, SilenceEndsAllThatSoundsEvenWhenTheQueueIsFull) {
    PlayerHost player;
    for (const bool is_full : {false, true}) {
        player->set_controller(CTRL_REVERB_ROOMSIZE, 127);
        for (const unsigned channel : {0U, 15U}) {
            player.midi(0xB0U | channel, CTRL_AUX1_LEVEL, 127);
            player.midi(0x90U | channel, 60, 100);
        }
        EXPECT_GT(peak(player.render(2048)), 0.01F);
        const uint8_t later[] = {0xB0, CTRL_PANNING, 64};
        while (is_full && player->audio().add_message(later, player->audio().time() + 100)) {
        }
        player->silence();
        player.render(8192); // the master's high-passes ring on
        EXPECT_LT(peak(player.render(4096)), 1e-3F) << is_full;
        player->meters().watched = true;
        player.render(64);
        EXPECT_EQ(player->meters().voices.load(), 0) << is_full;
    }
}

TEST(Player, WhatFoundNoRoomFollows) {
    const auto play = [](bool is_full) {
        PlayerHost player;
        player.render(64);
        const uint8_t later[] = {0xB0, CTRL_AUX2_LEVEL, 0};
        while (is_full && player->audio().add_message(later, player->audio().time() + 1000)) {
        }
        player->set_controller(CTRL_GLOBAL_FILTER1_TYPE, 1);
        player->set_controller(CTRL_PANNING, 0);
        player.render(2048);
        player.midi(0x90, 60, 100);
        return player.render(1024);
    };
    const std::vector<float> sound = play(true);
    EXPECT_EQ(sound, play(false));
    EXPECT_GT(peak(side(sound, 0)), 0.0F);
    EXPECT_EQ(peak(side(sound, 1)), 0.0F);
}

TEST(Player, NotesHeldForHoursStayAndKeepTheirOrder) {
    const auto play = [](bool hours) {
        PlayerHost player;
        player->set_controller(CTRL_CHAN_MAX_VOICES, 2);
        for (const unsigned note : {64U, 57U}) {
            player.midi(0x90, note, 100);
            player.render(44096);
        }
        for (int move = 0; move < 3; move++) {
            if (hours)
                player->audio().set_clock(PlayerAudio::CLOCK_LIMIT - 100);
            player.render(256);
        }
        player.midi(0x90, 45, 100); // steals the first note's voice
        return player.render(8192);
    };
    const std::vector<float> sound = play(true);
    EXPECT_GT(peak(sound), 0.001F);
    EXPECT_EQ(sound, play(false));
}

TEST(Player, TheClockStandsStillUntilThereIsAnEngine) {
    PlayerHost player(false);
    player.midi(0x90, 60, 100);
    player.render(64);
    EXPECT_EQ(player->audio().time(), 0U);
    player->start();
    const std::vector<float> sound = player.render(64);
    EXPECT_EQ(player->audio().time(), 64U);
    EXPECT_NE(sound[127], 0.0F) << "the note was not lost";
}

// What a scope shows is what is played; looking changes no sample and costs nothing afterwards.
TEST(Player, TheOutputIsKeptForAScope) {
    PlayerHost player;
    PlayerHost other; // nobody looks
    Meters& meters = player->meters();
    meters.watched = true;
    std::vector<float> left(512);
    std::vector<float> right(512);
    for (const OutputWatch watch : {OutputWatch::WHOLE, OutputWatch::PROGRAM}) {
        player->watch_output(watch);
        for (const unsigned status : {0x90U, 0x93U}) {
            for (PlayerHost* each : {&player, &other})
                each->midi(status, 60 + unsigned(watch), 100);
        }
        const std::vector<float> sound = player.render(512);
        EXPECT_TRUE(sound == other.render(512));
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
    player->set_edited_program(100);
    player.render(512);
    ASSERT_TRUE(meters.output.read(left, right));
    EXPECT_EQ(peak(left), 0.0F) << "no channel plays it";
    player->watch_output(OutputWatch::NOTHING);
    const uint32_t count = meters.output.count();
    player.render(512);
    EXPECT_EQ(meters.output.count(), count);
}

} // namespace

} // namespace tarquil
