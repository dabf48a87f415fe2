// Tests of a player's dialect: how it is chosen and kept, and that what one side does in General
// MIDI reaches the sound, whole and only where it should.

#include <gtest/gtest.h>

#include <array>

#include "midi/gm/gm_map_file.h"
#include "softsynth/parameters/filter_type.h"
#include "tests/support/player_host.h"

namespace tarquil {

namespace {

class PlayerDialect : public testing::Test {
  protected:
    PlayerDialect() {
        set->drums = std::make_unique<TarqSettings>();
        EXPECT_EQ(load_gm_map_from_string(set->map, "family = all\nk00_036 = all 1 60 100 64 200\n"
                                                    "p000_vibrato = 6 30 0 0.1\n"),
                  "");
    }

    void start(MidiDialect dialect) {
        player->set_gm_set(set);
        player->set_dialect(dialect);
        player->start();
        render(64);
    }
    void renew() {
        host = std::make_unique<PlayerHost>(false);
        player = &**host;
    }
    void start_anew(MidiDialect dialect) {
        renew();
        start(dialect);
    }
    void midi(unsigned status, unsigned data1, unsigned data2 = 0) {
        host->midi(status, data1, data2);
    }
    std::vector<float> render(uint32_t frames) { return host->render(frames); }
    // Nothing sounds any more, ten seconds from now.
    bool falls_silent() {
        render(64 * 6890);
        return peak(render(640)) < 1e-4F;
    }

    std::shared_ptr<GmSet> set = std::make_shared<GmSet>();
    std::unique_ptr<PlayerHost> host = std::make_unique<PlayerHost>(false);
    Player* player = &**host;
};

constexpr MidiDialect GM = MidiDialect::GENERAL_MIDI;
constexpr MidiDialect NATIVE = MidiDialect::NATIVE;

// While a program rings its channel may have gone on to another, which another part plays.
TEST_F(PlayerDialect, AWindowSeesTheNoteOfTheEditedProgram) {
    start(GM);
    Meters& meters = player->meters();
    meters.watched = true;
    const auto seen = [&](unsigned program) {
        player->set_edited_program(program);
        render(1024);
        NoteView note;
        EXPECT_TRUE(meters.note.read(note));
        return note.is_sounding != 0 ? int(note.note) : -1;
    };
    midi(0x90, 60, 100);
    midi(0xC0, 5);
    midi(0x90, 67, 100);
    midi(0x99, 36, 100);
    EXPECT_EQ(seen(5), 67);
    EXPECT_EQ(seen(0), 60) << "it rings on";
    EXPECT_EQ(seen(1), -1);
}

TEST_F(PlayerDialect, TheDrumsKeysHaveTheNamesOfWhatTheyPlay) {
    set->drums->get_instrument(1).set_name("snare");
    start(NATIVE);
    EXPECT_TRUE(player->drum_names().empty());
    player->set_dialect(GM);
    const auto names = player->drum_names();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0].key, 36);
    EXPECT_EQ(names[0].name, "snare");
    player->set_gm_set(nullptr);
    EXPECT_TRUE(player->drum_names().empty());
}

TEST_F(PlayerDialect, IsTheBanksAndKeptInTheState) {
    start(NATIVE);
    const std::string native = player->save_state();
    player->set_dialect(GM);
    EXPECT_EQ(player->channel_program(5), 0U) << "what nobody has chosen is the dialect's own";
    const std::string fresh = player->save_state();
    midi(0xC5, 40);
    render(64);
    const std::string chosen = player->save_state();
    EXPECT_NE(chosen.find("midi = gm"), std::string::npos);
    for (const std::string& state : {native, chosen, fresh, native, chosen}) {
        ASSERT_EQ(player->load_state(state), 0);
        render(64);
        EXPECT_EQ(player->save_state(), state);
        EXPECT_EQ(player->dialect(), state == native ? NATIVE : GM);
    }
    TarqSettings bank = player->get_bank();
    EXPECT_EQ(bank.get_midi_dialect(), GM);
    bank.set_midi_dialect(NATIVE);
    player->set_bank(bank);
    EXPECT_EQ(player->dialect(), NATIVE);
    EXPECT_EQ(player->channel_program(5), 40U) << "what somebody has chosen stays";
    midi(0xB0, CTRL_MAIN_VOLUME, 0);
    midi(0x90, 60, 100);
    EXPECT_EQ(peak(render(640)), 0.0F) << "the engine's own number";
}

TEST_F(PlayerDialect, ASwitchWhileNotesAreHeldLeavesNothingHanging) {
    for (const MidiDialect first : {NATIVE, GM}) {
        start_anew(first);
        midi(0x90, 60, 100);
        midi(0x99, 36, 100);
        EXPECT_GT(peak(render(640)), 0.001F);
        midi(0xB0, 7, 0); // which the other dialect has not been told
        player->set_dialect(first == GM ? NATIVE : GM);
        EXPECT_TRUE(falls_silent());
        EXPECT_EQ(player->meters().voices.load(), 0);
        midi(0x90, 62, 100);
        EXPECT_GT(peak(render(640)), 0.001F);
        player->set_dialect(first); // and back, with messages that nobody plays any more
        midi(0x80, 62, 0);
        EXPECT_TRUE(falls_silent());
        midi(0x90, 64, 100);
        EXPECT_GT(peak(render(640)), 0.001F);
    }
}

// A run's filters are set by what holds at its start, before a first hit there brings its sound;
// the melodic parts are in tests/formats/every.
TEST_F(PlayerDialect, WhatTheDrumsChannelsHadOfAnotherBankIsNotHeardInFirstHits) {
    TarqSettings bank;
    bank.set_midi_dialect(GM);
    Instrument& sound = bank.get_instrument(0);
    sound.set_controller(CTRL_FILTER1_TYPE, FILTER_LOWPASS);
    sound.set_controller(CTRL_FILTER1_DEPTH, 1);
    sound.set_controller(CTRL_FILTER1_CUTOFF, 40);
    sound.set_controller(CTRL_ENV1_ATTACK, 0);
    set->drums = std::make_unique<TarqSettings>(bank);
    ASSERT_EQ(load_gm_map_from_string(set->map, "family = all\nk00_036 = all 0 60 100 64 200\n"),
              "");
    const auto first_hit = [&](const TarqSettings& first) {
        start_anew(first.get_midi_dialect());
        player->set_bank(first);
        render(640);
        player->set_bank(bank);
        player->audio().follow_edits();
        player->audio().reset();
        render(640);
        const uint8_t hit[] = {0x99, 36, 100};
        EXPECT_TRUE(player->audio().add_message(hit, player->audio().time() + 12));
        return render(640);
    };
    const std::vector<float> wanted = first_hit(bank);
    EXPECT_GT(peak(wanted), 0.001F);
    TarqSettings other;
    for (const MidiDialect dialect : {NATIVE, GM}) {
        other.set_midi_dialect(dialect);
        EXPECT_TRUE(first_hit(other) == wanted) << int(dialect);
    }
}

TEST_F(PlayerDialect, AHostsStopRewritesNothing) {
    const auto play = [this](bool stops) {
        start_anew(GM);
        const std::string before = player->save_state();
        midi(0x90, 60, 100);
        render(6400);
        midi(0x80, 60, 0);
        for (unsigned channel = 0; stops && channel < 16; channel++)
            for (const unsigned controller : {121U, 64U, 123U})
                midi(0xB0 + channel, controller, 0);
        render(64000);
        EXPECT_EQ(player->save_state(), before);
        midi(0x90, 60, 100);
        return render(6400);
    };
    const std::vector<float> wanted = play(false);
    EXPECT_GT(peak(wanted), 0.001F);
    EXPECT_EQ(play(true), wanted);
}

TEST_F(PlayerDialect, AnEditIsHeardOnThePartsThatPlayItsProgramAndNowhereElse) {
    enum class Edit { NOTHING, OTHER, LEVEL, BEFORE_THE_NOTE, AUTOMATION };
    const auto play = [this](Edit edit) {
        start_anew(GM);
        midi(0xC2, 7);
        player->set_edited_program(edit == Edit::OTHER ? 8 : 7);
        if (edit == Edit::BEFORE_THE_NOTE)
            player->set_controller(CTRL_MAIN_VOLUME, 20);
        midi(0x92, 60, 100);
        render(640);
        if (edit == Edit::OTHER || edit == Edit::LEVEL)
            player->set_controller(CTRL_MAIN_VOLUME, 20);
        if (edit == Edit::AUTOMATION)
            player->audio().set_controller(CTRL_MAIN_VOLUME, 20, player->audio().time());
        render(640);
        return render(3200);
    };
    const std::vector<float> plain = play(Edit::NOTHING);
    EXPECT_EQ(play(Edit::OTHER), plain);
    const float quiet = peak(play(Edit::LEVEL));
    EXPECT_LT(quiet, 0.3F * peak(plain));
    EXPECT_GT(quiet, 0.0F);
    EXPECT_EQ(peak(play(Edit::AUTOMATION)), quiet);
    const float before = peak(play(Edit::BEFORE_THE_NOTE));
    EXPECT_LT(before, quiet) << "without the loud beginning's reverberation";
    EXPECT_GT(before, 0.0F);
}

TEST_F(PlayerDialect, TheWindowSeesProgramsWhoeverChangesThem) {
    start(GM);
    const uint32_t changes = player->num_changes();
    midi(0xC3, 33);
    render(64);
    EXPECT_EQ(player->channel_program(3), 33U);
    EXPECT_NE(player->num_changes(), changes);
    player->set_channel_program(4, 44);
    midi(0x94, 60, 100);
    render(64);
    EXPECT_EQ(player->meters().played_channels.load(), 1U << 4U);
    const uint8_t reset[] = {0xF0, 0x7E, 0x7F, 9, 1, 0xF7};
    ASSERT_TRUE(player->audio().add_exclusive(reset, player->audio().time()));
    EXPECT_EQ(player->channel_program(4), 44U);
    render(64);
    EXPECT_EQ(player->channel_program(4), 0U);
}

TEST_F(PlayerDialect, GlobalsAreHeardHoweverTheyCome) {
    enum class Way { NONE, START, LOAD, SWITCH, SET };
    const auto play = [this](Way way, uint8_t status, uint8_t key) {
        TarqSettings bank;
        bank.set_midi_dialect(way == Way::SWITCH ? NATIVE : GM);
        const auto other_set = std::make_shared<GmSet>();
        other_set->map = set->map;
        other_set->drums = std::make_unique<TarqSettings>();
        for (TarqSettings* each : {&bank, other_set->drums.get()}) {
            each->set_global_controller(CTRL_GLOBAL_FILTER1_TYPE, FILTER_HIGHPASS);
            each->set_global_controller(CTRL_GLOBAL_FILTER1_CUTOFF, 90);
        }
        renew();
        const auto take = [&] {
            player->set_bank(bank);
            player->set_gm_set(other_set);
        };
        if (way == Way::START)
            take();
        player->set_gm_set(way == Way::START ? other_set : set);
        player->set_dialect(way == Way::SWITCH ? NATIVE : GM);
        player->start();
        render(640);
        if (way == Way::LOAD || way == Way::SWITCH)
            take();
        if (way == Way::SET)
            player->set_gm_set(other_set);
        player->set_dialect(GM);
        render(640);
        midi(status, key, 100);
        return render(6400);
    };
    for (const uint8_t status : {uint8_t(0x90), uint8_t(0x99)}) {
        const std::vector<float> wanted = play(Way::START, status, 36);
        EXPECT_GT(peak(wanted), 0.001F);
        EXPECT_NE(play(Way::NONE, status, 36), wanted);
        EXPECT_EQ(play(Way::LOAD, status, 36), wanted);
        EXPECT_EQ(play(Way::SWITCH, status, 36), wanted);
    }
    EXPECT_EQ(play(Way::SET, 0x99, 36), play(Way::START, 0x99, 36));
}

TEST_F(PlayerDialect, DrumsComeAndGoWithTheirSet) {
    start(GM);
    midi(0x99, 36, 100);
    EXPECT_GT(peak(render(640)), 0.001F);
    player->set_gm_set(nullptr);
    EXPECT_TRUE(falls_silent());
    midi(0x99, 36, 100);
    EXPECT_EQ(peak(render(640)), 0.0F);
    player->set_gm_set(set);
    midi(0x99, 36, 100);
    EXPECT_GT(peak(render(640)), 0.001F);
}

TEST_F(PlayerDialect, LawsHoldForTheSoundsWhoseNamesTheyBear) {
    const auto play = [this](const std::string& program_name) {
        renew();
        player->set_program_name(0, program_name);
        start(GM);
        midi(0x90, 60, 100);
        return render(6400);
    };
    const std::vector<float> lawful = play("piano");
    set->names[0] = "piano";
    set->guest_names[0] = "gong";
    EXPECT_EQ(play("piano"), lawful);
    const std::vector<float> lawless = play("gong");
    EXPECT_NE(lawful, lawless);
    EXPECT_EQ(play("drum"), lawless);
    std::swap(set->guest_rules, set->map.programs);
    EXPECT_EQ(play("piano"), lawless);
    EXPECT_EQ(play("gong"), lawful) << "another bank's sounds have laws of their own";
    EXPECT_EQ(play("drum"), lawless);
}

TEST_F(PlayerDialect, AFloodIsPlayedLaterAndNotLost) {
    start(GM);
    for (unsigned i = 0; player->audio().num_queued_events() < EventQueue::CAPACITY; i++)
        midi(0xB0 + i % 16, i % 2 == 0 ? 10 : 7, i % 128);
    for (int i = 0; i < 6000; i++)
        player->set_controller(unsigned(CTRL_PANNING), i % 128);
    player->set_dialect(NATIVE);
    player->set_dialect(GM);
    render(64);
    for (unsigned i = 0; player->audio().num_queued_events() < EventQueue::CAPACITY - 20; i++)
        midi(0x90 + i % 16, i % 128, 100);
    for (unsigned channel = 0; channel < 16; channel++)
        midi(0xB0 + channel, 123, 0);
    render(64);
    EXPECT_GT(player->audio().num_queued_events(), 0U);
    EXPECT_TRUE(falls_silent());
    EXPECT_EQ(player->audio().num_queued_events(), 0U);
    EXPECT_EQ(
        player->audio().ensemble()->report().kinds[unsigned(GmMessage::NOTES)] +
            player->audio().ensemble()->report().kinds[unsigned(GmMessage::DRUMS)] +
            player->audio().ensemble()->report().kinds[unsigned(GmMessage::DRUMS_WITHOUT_SOUND)],
        EventQueue::CAPACITY - 20U);
}

// Slopes, glides, delays, automation, and events that were queued before and are played after.
TEST_F(PlayerDialect, TheClockMayBeMovedBackWhileEverythingSounds) {
    const auto play = [this](MidiDialect dialect, uint32_t clock) {
        renew();
        for (const auto& [number, byte] :
             std::initializer_list<std::pair<unsigned, int>>{{CTRL_ENV1_ATTACK, 60},
                                                             {CTRL_ENV1_RELEASE, 50},
                                                             {CTRL_PORTAMENTO_TIME, 60},
                                                             {CTRL_FILTER1_TYPE, 21},
                                                             {CTRL_CUTOFF1_INFLUENCE1_SOURCE, 2},
                                                             {CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 90},
                                                             {CTRL_CHANFX2_TYPE, 1},
                                                             {CTRL_AUX1_LEVEL, 90},
                                                             {CTRL_AUX2_LEVEL, 90}})
            player->set_controller(number, byte);
        player->audio().set_clock(clock);
        start(dialect);
        midi(0xB0, 7, 30);
        midi(0x90, 50, 100);
        midi(0x99, 36, 100);
        midi(0xB0, 7, 120);
        for (const auto& [delay, status, data1, data2] :
             std::initializer_list<std::array<uint16_t, 4>>{{500, 0x90, 62, 100},
                                                            {2990, 0x90, 57, 100},
                                                            {3010, 0xE0, 0, 80},
                                                            {3500, 0x80, 50, 0},
                                                            {5000, 0x80, 62, 0}}) {
            const uint8_t message[] = {uint8_t(status), uint8_t(data1), uint8_t(data2)};
            player->audio().add_message(message, player->audio().time() + delay);
        }
        std::vector<float> sound;
        for (int piece = 0; piece < 40; piece++) {
            player->set_controller(CTRL_FILTER1_CUTOFF, piece * 3);
            player->set_controller(CTRL_MAIN_VOLUME, 127 - piece);
            player->audio().follow_edits();
            const std::vector<float> part = render(256);
            sound.insert(sound.end(), part.begin(), part.end());
        }
        return sound;
    };
    for (const MidiDialect dialect : {GM, NATIVE}) {
        const std::vector<float> wanted = play(dialect, Tarquil::MIN_MOVED_CLOCK);
        EXPECT_GT(peak(wanted), 0.001F);
        for (const uint32_t before : {128U, 3072U, 6400U, 500U, 2990U, 3011U, 3600U, 5001U}) {
            if (dialect == GM && before % 128 != 0)
                continue; // the grid of its vibrato and its glides
            EXPECT_EQ(play(dialect, PlayerAudio::CLOCK_LIMIT - before), wanted) << before;
            EXPECT_LT(player->audio().time(), PlayerAudio::CLOCK_LIMIT);
        }
    }
}

} // namespace

} // namespace tarquil
