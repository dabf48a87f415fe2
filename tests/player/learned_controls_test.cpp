// Tests of MIDI controllers that have been taught, as players hear them.

#include <gtest/gtest.h>

#include "softsynth/parameters/filter_type.h"
#include "tests/support/player_host.h"

namespace tarquil {

namespace {

class TaughtPlayer {
  public:
    explicit TaughtPlayer(MidiDialect dialect, const LearnedControls& learned = {}) {
        player.set_dialect(dialect);
        player.set_learned(learned);
        player.start();
        Instrument sound = player.get_instrument(0);
        sound.set_controller(CTRL_FILTER1_TYPE, FILTER_LADDER_START_MARKER);
        sound.set_controller(CTRL_FILTER1_DEPTH, 1);
        sound.set_controller(CTRL_FILTER1_CUTOFF, 100);
        player.set_instrument(0, sound);
        render(64);
        midi(0x90, 48, 100);
    }
    void midi(unsigned status, unsigned data1, unsigned data2) { host.midi(status, data1, data2); }
    std::vector<float> render(uint32_t frames) { return host.render(frames); }
    std::vector<float> after(unsigned status, unsigned data1, unsigned data2) {
        midi(status, data1, data2);
        return render(4096);
    }

    PlayerHost host{false};
    Player& player = *host;
};

class LearnedControlsIn : public testing::TestWithParam<MidiDialect> {
  protected:
    static LearnedControls taught_cutoff() {
        LearnedControls learned;
        learned.set(74, LearnedControl{CTRL_FILTER1_CUTOFF, 90, 20});
        return learned;
    }
    // Which nobody hears.
    static LearnedControls taught_silence(unsigned midi_controller) {
        LearnedControls learned;
        learned.learn(midi_controller, CTRL_LPC_SELECT);
        return learned;
    }
};

TEST_P(LearnedControlsIn, ATaughtControllerActsAsItsParametersAutomation) {
    TaughtPlayer taught(GetParam(), taught_cutoff());
    TaughtPlayer automated(GetParam());
    TaughtPlayer untouched(GetParam());
    automated.player.audio().set_controller(CTRL_FILTER1_CUTOFF, 20,
                                            automated.player.audio().time());
    const std::vector<float> sound = taught.after(0xB7, 74, 127); // on a channel of its own
    EXPECT_EQ(sound, automated.render(4096));
    EXPECT_NE(sound, untouched.render(4096));
    EXPECT_EQ(taught.player.get_controller(CTRL_FILTER1_CUTOFF), 20) << "in the bank";
    EXPECT_EQ(taught.after(0xB0, 74, 200), automated.render(4096)) << "no data byte";
}

TEST_P(LearnedControlsIn, ATaughtNumberDoesNothingElse) {
    // Volume, wheel and pedal of General MIDI; the engine's own 7 and 74.
    for (const unsigned number : {7U, 1U, 64U, 74U}) {
        TaughtPlayer taught(GetParam(), taught_silence(number));
        TaughtPlayer untouched(GetParam());
        EXPECT_EQ(taught.after(0xB0, number, 127), untouched.render(4096)) << number;
    }
}

TEST_P(LearnedControlsIn, WhatIsHeardWhileLearningDoesNothing) {
    TaughtPlayer learner(GetParam());
    TaughtPlayer untouched(GetParam());
    learner.player.listen(true);
    EXPECT_EQ(learner.after(0xB0, 7, 0), untouched.render(4096));
    EXPECT_EQ(learner.player.take_heard_controller(), 7U);
    EXPECT_EQ(learner.player.take_heard_controller(), std::nullopt);
    learner.midi(0xB0, 123, 0);
    EXPECT_EQ(learner.player.take_heard_controller(), std::nullopt) << "that ends notes";
    learner.player.listen(false);
    learner.midi(0xB0, 7, 0);
    EXPECT_EQ(learner.player.take_heard_controller(), std::nullopt);
    EXPECT_NE(learner.render(4096), untouched.render(4096));
}

TEST_P(LearnedControlsIn, TheyComeAndGoWithTheBank) {
    TaughtPlayer one(GetParam(), taught_cutoff());
    const std::string state = one.player.save_state();
    Player other;
    ASSERT_EQ(other.load_state(state), 0);
    EXPECT_EQ(other.get_bank().get_learned(), taught_cutoff());
    TaughtPlayer loaded(GetParam());
    TaughtPlayer untouched(GetParam());
    one.player.set_learned({});
    ASSERT_EQ(loaded.player.load_state(one.player.save_state()), 0);
    ASSERT_EQ(untouched.player.load_state(one.player.save_state()), 0);
    EXPECT_EQ(loaded.player.get_bank().get_learned(), LearnedControls());
    EXPECT_EQ(loaded.after(0xB0, 3, 5), untouched.render(4096));
}

// Keys that are down, and only these, are struck again; a pedal's notes would never end.
TEST_P(LearnedControlsIn, HeldKeysAreStruckAgain) {
    const bool is_gm = GetParam() == MidiDialect::GENERAL_MIDI;
    const auto played = [&](bool by_hand) {
        TaughtPlayer one(GetParam());
        one.midi(0x90, 60, 80);
        one.midi(0x90, 64, 90);
        one.midi(0x80, 60, 64);
        one.midi(0x93, 50, 90); // in the native dialect another program's
        if (is_gm)
            one.midi(0xC3, 9, 0);
        one.render(640);
        const std::pair<unsigned, unsigned> held[] = {{48, 100}, {64, 90}};
        for (const auto& [key, velocity] : held) {
            if (!by_hand)
                break;
            one.midi(0x80, key, 64);
            one.midi(0x90, key, velocity);
        }
        if (!by_hand)
            one.player.strike_again();
        return one.render(4096);
    };
    EXPECT_EQ(played(false), played(true));
    TaughtPlayer pedal(GetParam());
    pedal.midi(0xB0, 64, is_gm ? 127 : 0);
    pedal.midi(0x80, 48, 64);
    pedal.render(640);
    pedal.player.strike_again();
    pedal.render(640);
    pedal.midi(0xB0, 64, 0);
    pedal.render(64 * 6890);
    EXPECT_LT(peak(pedal.render(640)), 1e-4F);
}

TEST(StrikeAgain, LeavesKitsAloneOnAnyChannelThatPlaysOne) {
    TaughtPlayer taught(MidiDialect::GENERAL_MIDI);
    const uint8_t use_for_rhythm[] = {0xF0, 0x41, 0x10, 0x42, 0x12, 0x40,
                                      0x14, 0x15, 0x02, 0x15, 0xF7}; // channel 4
    taught.midi(0x80, 48, 64);
    taught.player.audio().add_exclusive(use_for_rhythm, taught.player.audio().time());
    taught.midi(0x93, 36, 100);
    taught.render(640);
    const auto count = [&] { return taught.player.audio().ensemble()->report().messages; };
    const auto before = count();
    taught.player.strike_again();
    taught.render(640);
    EXPECT_EQ(count(), before);
    taught.midi(0x90, 60, 100);
    taught.render(640);
    taught.player.strike_again();
    taught.render(640);
    EXPECT_EQ(count(), before + 3) << "one that plays the program is struck";
}

INSTANTIATE_TEST_SUITE_P(Dialects, LearnedControlsIn,
                         testing::Values(MidiDialect::NATIVE, MidiDialect::GENERAL_MIDI),
                         [](const auto& dialect) {
                             return dialect.param == MidiDialect::NATIVE ? "Native" : "GeneralMidi";
                         });

} // namespace

} // namespace tarquil
