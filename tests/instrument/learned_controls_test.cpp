// Tests of what MIDI controllers have been taught, and of its lines in banks.

#include "instrument/learned_controls.h"

#include <gmock/gmock.h>

#include "instrument/checked_load.h"
#include "instrument/settings.h"
#include "softsynth/parameters/controller_table.h"
#include "tests/support/bank_text.h"

namespace tarquil {

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

TEST(LearnedControlsTest, ValuesReachBothEndsAndGoBackwards) {
    const LearnedControl whole{CTRL_PANNING, 0, 127};
    const LearnedControl part{CTRL_PANNING, 10, 20};
    const LearnedControl reversed{CTRL_PANNING, 127, 0};
    for (unsigned data = 0; data < 128; data++) {
        EXPECT_EQ(whole.value(data), int(data));
        EXPECT_EQ(reversed.value(data), 127 - int(data));
        EXPECT_NEAR(part.value(data), 10 + 10.0 * data / 127, 0.5);
    }
    EXPECT_EQ((LearnedControl{CTRL_PANNING, 5, 5}.value(64)), 5);
}

TEST(LearnedControlsTest, AControlHasOneTeacherAndKeepsItsRange) {
    LearnedControls learned;
    learned.learn(20, CTRL_FILTER1_CUTOFF);
    learned.set(20, LearnedControl{CTRL_FILTER1_CUTOFF, 90, 30});
    learned.learn(21, CTRL_FILTER1_CUTOFF);
    EXPECT_FALSE(learned.get(20));
    EXPECT_EQ(learned.get(21), (LearnedControl{CTRL_FILTER1_CUTOFF, 90, 30}));
    learned.learn(21, CTRL_CHAN_MAX_VOICES);
    EXPECT_EQ(learned.find(CTRL_FILTER1_CUTOFF), std::nullopt);
    EXPECT_EQ(learned.get(21), (LearnedControl{CTRL_CHAN_MAX_VOICES, 1, 96}));
    const LearnedControls before = learned;
    for (const unsigned kept : {0U, 6U, 32U, 38U, 96U, 101U, 120U, 123U, 127U})
        learned.learn(kept, CTRL_PANNING);
    learned.learn(22, CTRL_PITCH_BEND_MSB);
    learned.learn(22, 3); // no row
    EXPECT_EQ(learned, before);
}

TEST(LearnedControlsTest, ABankWritesItsLinesOnlyWhenThereAreAny) {
    TarqSettings bank;
    const std::string plain = text_of(bank);
    EXPECT_THAT(plain, Not(HasSubstr("learn")));
    LearnedControls learned;
    learned.learn(74, CTRL_FILTER1_CUTOFF);
    learned.set(1, LearnedControl{CTRL_REVERB_WET, 127, 3});
    bank.set_learned(learned);
    const std::string text = text_of(bank);
    EXPECT_THAT(text, HasSubstr("learn74 = filter1_cutoff 0 127\n"));
    EXPECT_THAT(text, HasSubstr("learn1 = reverb_wet 127 3\n"));
    for (const std::string& saved : {text, save_state_compact(bank)}) {
        TarqSettings loaded;
        ASSERT_EQ(load_bank_checked_from_string(loaded, saved), 0);
        EXPECT_EQ(loaded.get_learned(), learned);
    }
    bank.set_learned({});
    EXPECT_EQ(text_of(bank), plain);
}

TEST(LearnedControlsTest, ALineThatMeansNothingIsReportedAndKept) {
    for (const char* const line :
         {"learn74 = filter1_cutoff 0 128", "learn74 = filter1_cutoff 0",
          "learn74 = filter1_cutoff 0 127 3", "learn74 = filter1_cutoff -1 5",
          "learn74 = nothing 0 1", "learn74 = pitch_bend_msb 0 1", "learn74 = filter1_cutoff  0 1",
          "learn74 = 0", "learn74 = filter1_cutoff 00 1", "learn123 = filter1_cutoff 0 1",
          "learn074 = filter1_cutoff 0 1", "learn128 = filter1_cutoff 0 1"}) {
        TarqSettings bank;
        LoadReport report;
        const std::string text = std::string("state_version = 2\n") + line + "\n";
        ASSERT_EQ(load_bank_checked_from_string(bank, text, &report), 0);
        EXPECT_EQ(bank.get_learned(), LearnedControls()) << line;
        EXPECT_THAT(save_state_compact(bank), HasSubstr(line));
        if (std::string(line).starts_with("learn74")) {
            EXPECT_THAT(report.warnings, Contains(HasSubstr("learn74")));
        }
        LearnedControls learned;
        learned.learn(74, CTRL_PANNING);
        bank.set_learned(learned);
        EXPECT_EQ(bank.get_learned(), learned) << "a new one takes its place";
    }
}

} // namespace

} // namespace tarquil
