// Keys and pedals, as on a piano.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/midi/gm/engine_model.h"

namespace tarquil {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr uint8_t SUSTAIN = 64;
constexpr uint8_t SOSTENUTO = 66;

class Pedals : public testing::Test, public DialectRig {};

TEST_F(Pedals, SustainHoldsUntilItRises) {
    note_on(60);
    control(SUSTAIN, 127);
    note_off(60);
    note_on(64);
    EXPECT_THAT(sounding(), ElementsAre(60, 64));
    control(SUSTAIN, 70); // still down
    control(SUSTAIN, 63); // up; the key 64 still is
    EXPECT_THAT(sounding(), ElementsAre(64));
    note_off(64);
    EXPECT_THAT(sounding(), IsEmpty());
}

TEST_F(Pedals, SustainIsOfOneChannel) {
    control(SUSTAIN, 127, 1);
    note_on(60, 100, 0);
    note_on(60, 100, 1);
    note_off(60, 0);
    note_off(60, 1);
    EXPECT_THAT(sounding(0), IsEmpty());
    EXPECT_THAT(sounding(1), ElementsAre(60));
}

TEST_F(Pedals, ASecondStrikeLeavesOneNote) {
    control(SUSTAIN, 127);
    for (int i = 0; i < 3; i++) {
        note_on(60);
        note_off(60);
    }
    EXPECT_EQ(dialect.num_held_notes(), 1U);
    control(SUSTAIN, 0);
    EXPECT_EQ(dialect.num_held_notes(), 0U);
    EXPECT_THAT(sounding(), IsEmpty());
}

TEST_F(Pedals, SostenutoHoldsWhatWasDown) {
    note_on(48);
    control(SOSTENUTO, 127);
    note_on(60);
    control(SOSTENUTO, 90); // again down: catches nothing more
    note_off(48);
    note_off(60);
    EXPECT_THAT(sounding(), ElementsAre(48));
    note_on(48); // struck again, its string is still free
    note_off(48);
    EXPECT_THAT(sounding(), ElementsAre(48));
    control(SOSTENUTO, 0);
    EXPECT_THAT(sounding(), IsEmpty());
}

TEST_F(Pedals, BothPedalsTogether) {
    note_on(48);
    control(SOSTENUTO, 127);
    control(SUSTAIN, 127);
    note_on(60);
    note_off(48);
    note_off(60);
    control(SUSTAIN, 0);
    EXPECT_THAT(sounding(), ElementsAre(48));
    control(SUSTAIN, 127);
    control(SOSTENUTO, 0);
    EXPECT_THAT(sounding(), ElementsAre(48)); // now the other one holds it
    control(SUSTAIN, 0);
    EXPECT_THAT(sounding(), IsEmpty());
}

TEST_F(Pedals, AllNotesOffLetsPedalsHold) {
    note_on(60);
    note_on(62);
    control(SUSTAIN, 127);
    control(123, 0);
    EXPECT_THAT(sounding(), ElementsAre(60, 62));
    control(SUSTAIN, 0);
    EXPECT_THAT(sounding(), IsEmpty());
}

TEST_F(Pedals, ResetReleasesWhatPedalsHeldButNotKeys) {
    note_on(48);
    control(SOSTENUTO, 127);
    control(SUSTAIN, 127);
    note_on(60);
    note_on(72);
    note_off(48);
    note_off(60);
    control(121, 0);
    EXPECT_THAT(sounding(), ElementsAre(72));
}

TEST_F(Pedals, AllSoundOffEndsHeldNotes) {
    control(SUSTAIN, 127);
    note_on(60);
    note_off(60);
    control(120, 0);
    EXPECT_EQ(model.channels[0][0].silences, 1U);
    EXPECT_EQ(dialect.num_held_notes(), 0U);
    control(120, 0); // the tail may still sound, later it does not
    wait(5.0);
    control(120, 0);
    EXPECT_LE(model.channels[0][0].silences, 2U);
    EXPECT_EQ(model.channels[0][0].master_silences, 0U);
}

TEST_F(Pedals, AllSoundOffEndsTheEchoesOfNotesThatHaveEnded) {
    bytes[CTRL_ENV1_RELEASE] = 0;
    note_on(60);
    note_off(60);
    wait(1.0);
    control(120, 0);
    EXPECT_EQ(model.channels[0][0].silences, 1U);
}

TEST_F(Pedals, MonoModePlaysOneVoice) {
    control(126, 1);
    note_on(60);
    note_on(64);
    EXPECT_THAT(sounding(), ElementsAre(64));
    note_off(60);
    note_off(64);
    EXPECT_THAT(sounding(), IsEmpty());
    control(127, 0);
    note_on(60);
    note_on(64);
    EXPECT_THAT(sounding(), ElementsAre(60, 64));
}

TEST_F(Pedals, SoftPedalIsQuieterAndDarker) {
    bytes[CTRL_FILTER1_CUTOFF] = 80;
    note_on(60);
    control(67, 127);
    note_on(62);
    EXPECT_EQ(byte(CTRL_FILTER1_CUTOFF), 72U);
    EXPECT_NEAR(model.strikes[1].velocity, model.strikes[0].velocity * 0.5625, 1.0);
    control(67, 0);
    EXPECT_EQ(byte(CTRL_FILTER1_CUTOFF), 80U);
}

TEST_F(Pedals, ScarceVoicesGoToMelodyAndBass) {
    time = 0x30000000; // hours
    control(SUSTAIN, 127);
    for (uint8_t key = 20; key < 110; key++) {
        note_on(key, key == 20 || key == 109 ? 30 : 100);
        note_off(key);
        wait(0.05);
    }
    EXPECT_LT(dialect.num_held_notes(), 90U);
    EXPECT_GT(dialect.report().shortfalls[unsigned(GmShortfall::NOTE_RELEASED)], 0U);
    EXPECT_TRUE(sounding().contains(20));  // the bass, though soft and old
    EXPECT_FALSE(sounding().contains(21)); // the oldest beside it
    EXPECT_TRUE(sounding().contains(109));
    // A clock that is moved back leaves no tail behind that has a voice for hours.
    control(SUSTAIN, 0);
    dialect.move_clock_back(time);
    model.start_clock_anew();
    time = 0;
    wait(20.0);
    const uint64_t released = dialect.report().shortfalls[unsigned(GmShortfall::NOTE_RELEASED)];
    control(SUSTAIN, 127);
    for (uint8_t key = 20; key < 60; key++) {
        note_on(key);
        note_off(key);
    }
    EXPECT_EQ(dialect.report().shortfalls[unsigned(GmShortfall::NOTE_RELEASED)], released);
}

} // namespace
} // namespace tarquil
