// Parts: which engine channel plays a sound.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/midi/gm/engine_model.h"

namespace tarquil {
namespace {

using testing::ElementsAre;

class Parts : public testing::Test, public DialectRig {
  protected:
    void program(uint8_t number, unsigned channel = 0) { send({uint8_t(0xC0U | channel), number}); }
};

TEST_F(Parts, AProgramChangeCutsNothing) {
    ControllerBytes other = bytes;
    other[CTRL_ENV1_DECAY] = 11;
    sounds.melodic[7] = &other;
    use();
    note_on(60);
    program(7);
    EXPECT_EQ(byte(CTRL_ENV1_DECAY, 0), bytes[CTRL_ENV1_DECAY]);
    note_on(62);
    ASSERT_EQ(model.strikes.size(), 2U);
    EXPECT_NE(model.strikes[1].channel, 0U);
    EXPECT_EQ(model.strikes[1].bytes[CTRL_ENV1_DECAY], 11);
    EXPECT_THAT(sounding(0), ElementsAre(60));
    bend(16383); // moves both
    EXPECT_GT(bend_semitones(0), 1.9);
    EXPECT_GT(bend_semitones(model.strikes[1].channel), 1.9);
    note_off(60);
    note_off(62);
    EXPECT_EQ(model.num_sounding(), 0U);
    program(0);
    note_on(64);
    EXPECT_EQ(model.strikes[2].channel, 0U); // its part is still there
}

TEST_F(Parts, TheLongestSilentOneGivesWay) {
    for (uint8_t i = 0; i < 16; i++) {
        program(i);
        note_on(uint8_t(40 + i));
        if (i != 0)
            note_off(uint8_t(40 + i));
        wait(i == 3 ? 4.0 : 1.0);
    }
    EXPECT_EQ(model.strikes.size(), 16U);
    wait(10.0);
    program(100);
    note_on(90);
    // Part 0 is held; part 1 had the oldest note of the silent ones.
    EXPECT_EQ(model.strikes.back().channel, model.strikes[1].channel);
    EXPECT_THAT(sounding(0), ElementsAre(40));
    EXPECT_EQ(dialect.report().shortfalls[unsigned(GmShortfall::PART_TAKEN)], 0U);
}

TEST_F(Parts, SixteenHeldSoundsGiveUpTheOldest) {
    for (uint8_t i = 0; i < 17; i++) {
        program(i);
        note_on(uint8_t(40 + i));
        wait(0.1);
    }
    EXPECT_EQ(model.strikes.back().channel, model.strikes.front().channel);
    EXPECT_EQ(model.channels[0][0].silences, 1U);
    EXPECT_EQ(dialect.report().shortfalls[unsigned(GmShortfall::PART_TAKEN)], 1U);
    for (uint8_t i = 0; i < 17; i++)
        note_off(uint8_t(40 + i));
    EXPECT_EQ(model.num_sounding(), 0U);
}

} // namespace
} // namespace tarquil
