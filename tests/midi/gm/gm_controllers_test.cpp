// Controllers, parameters and resets of melodic parts.

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/midi/gm/engine_model.h"

namespace tarquil {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class GmControllers : public testing::Test, public DialectRig {
  protected:
    void choose_rpn(uint8_t lsb, uint8_t msb = 0) {
        control(101, msb);
        control(100, lsb);
    }
    // The bend of a wheel all the way up.
    double full_bend() {
        bend(16383);
        const double semitones = bend_semitones();
        bend(8192);
        return semitones;
    }
};

TEST_F(GmControllers, StartsAsGeneralMidiAsks) {
    note_on(60);
    const EngineModel::Strike& strike = model.strikes.at(0);
    EXPECT_EQ(strike.channel, 0U);
    EXPECT_EQ(strike.bytes[CTRL_MAIN_VOLUME],
              volume_byte(exact_volume(bytes[CTRL_MAIN_VOLUME], 100, 127, MAX_MASTER_VOLUME)));
    EXPECT_EQ(strike.bytes[CTRL_PANNING], 64);
    EXPECT_EQ(strike.bytes[CTRL_PITCH_BEND_MSB], 64);
    EXPECT_NEAR(full_bend(), 2.0, 0.002);
}

TEST_F(GmControllers, VolumeAndExpressionMultiplyAndMoveWithoutAJump) {
    note_on(60);
    const unsigned before = byte(CTRL_MAIN_VOLUME);
    control(7, 50);
    control(11, 64);
    EXPECT_EQ(byte(CTRL_MAIN_VOLUME), before); // nothing at once
    const size_t count = model.events.size();
    wait(0.003);
    const double exact = exact_volume(bytes[CTRL_MAIN_VOLUME], 50, 64, MAX_MASTER_VOLUME);
    EXPECT_EQ(byte(CTRL_MAIN_VOLUME), volume_byte(exact));
    EXPECT_GT(model.events.size(), count + 15);
}

TEST_F(GmControllers, ALevelLawIsInTheVelocity) {
    const auto strike = [this](uint8_t key, uint8_t velocity) {
        note_on(key, velocity);
        note_off(key);
        return double(model.strikes.back().velocity);
    };
    control(7, 127);
    const double even = strike(36, 127);
    const double soft = strike(60, 64);
    map.programs.level[0] = {.at = 60, .below = -3.0F, .above = 0.0F, .per_velocity = -1.0F};
    EXPECT_NEAR(20 * std::log10(strike(36, 127) / even), -6.0, 0.2);
    EXPECT_EQ(strike(84, 127), even);
    EXPECT_NEAR(20 * std::log10(strike(60, 64) / soft), 63.0 / 12, 0.3);
}

TEST_F(GmControllers, ASilentPartJumpsToItsLevel) {
    note_on(60);
    note_off(60);
    wait(5.0);
    control(7, 20);
    note_on(60);
    EXPECT_EQ(model.strikes.back().bytes[CTRL_MAIN_VOLUME],
              volume_byte(exact_volume(bytes[CTRL_MAIN_VOLUME], 20, 127, MAX_MASTER_VOLUME)));
}

TEST_F(GmControllers, BendRangeComesFromItsParameter) {
    note_on(60);
    choose_rpn(0);
    control(6, 7);
    control(38, 50); // cents
    EXPECT_NEAR(full_bend(), 7.5, 0.002);
    control(96, 0); // one cent more
    EXPECT_NEAR(full_bend(), 7.51, 0.002);
    control(97, 0);
    choose_rpn(127, 127); // null
    control(6, 2);
    control(38, 0);
    control(96, 0);
    EXPECT_NEAR(full_bend(), 7.5, 0.002);
    EXPECT_EQ(dialect.report().shortfalls[unsigned(GmShortfall::DATA_WITHOUT_TARGET)], 3U);
}

TEST_F(GmControllers, DataAndLsbsWithoutAParameterTouchNothing) {
    note_on(60);
    const ControllerBytes before = model.channels[0][0].bytes;
    for (const int number : {6, 38, 32, 33, 39, 42, 43, 63, 98, 99, 94, 102, 110, 119, 122})
        control(uint8_t(number), 3);
    control(6, 9); // behind an NRPN that is not known
    wait(0.01);
    EXPECT_EQ(model.channels[0][0].bytes, before);
    EXPECT_NEAR(full_bend(), 2.0, 0.002);
}

TEST_F(GmControllers, TuningsMovePitch) {
    choose_rpn(2);
    control(6, 64 - 5);
    choose_rpn(1);
    control(6, 96); // half way up: 50 cents
    note_on(60);
    EXPECT_THAT(sounding(), ElementsAre(55));
    EXPECT_NEAR(bend_semitones(), 0.5, 0.001);
    send({0xF0, 0x7F, 0x7F, 0x04, 0x03, 0x00, 0x60, 0xF7}); // master: 50 cents more
    EXPECT_NEAR(bend_semitones(), 1.0, 0.001);
    send({0xF0, 0x7F, 0x7F, 0x04, 0x04, 0x00, 65, 0xF7});
    note_on(72);
    EXPECT_THAT(sounding(), ElementsAre(55, 68));
    note_off(60);
    note_off(72);
    EXPECT_THAT(sounding(), IsEmpty());
}

TEST_F(GmControllers, WideBendsMoveTheNote) {
    choose_rpn(0);
    control(6, 24);
    bend(16383);
    note_on(60);
    EXPECT_THAT(sounding(), ElementsAre(84));
    EXPECT_NEAR(bend_semitones(), 0.0, 0.01);
    bend(8192 + 4096); // 12 below: still in reach
    EXPECT_NEAR(bend_semitones(), -12.0, 0.01);
    EXPECT_EQ(dialect.report().shortfalls[unsigned(GmShortfall::BEND_CLAMPED)], 0U);
    bend(8192); // 24 below is not
    EXPECT_NEAR(bend_semitones(), -12.0, 0.01);
    EXPECT_EQ(dialect.report().shortfalls[unsigned(GmShortfall::BEND_CLAMPED)], 1U);
    note_off(60);
    EXPECT_THAT(sounding(), IsEmpty());
    note_on(60);
    EXPECT_THAT(sounding(), ElementsAre(60));
    EXPECT_NEAR(bend_semitones(), 0.0, 0.01);
}

TEST_F(GmControllers, VibratoSwingsByModulation) {
    note_on(60);
    control(1, 127);
    double lowest = 0.0;
    double highest = 0.0;
    int crossings = 0;
    double last = 0.0;
    for (int i = 0; i < 2000; i++) {
        wait(0.001);
        const double value = bend_semitones();
        crossings += last <= 0.0 && value > 0.0 ? 1 : 0;
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
        last = value;
    }
    EXPECT_NEAR(highest, 0.5, 0.01);
    EXPECT_NEAR(lowest, -0.5, 0.01);
    EXPECT_NEAR(crossings, 11, 1);
    control(1, 0);
    wait(0.01);
    EXPECT_EQ(bend_semitones(), 0.0);
    const size_t count = model.events.size();
    wait(1.0);
    EXPECT_EQ(model.events.size(), count); // nothing is sent while nothing swings
    send({0xD0, 64});                      // pressure does the same
    wait(0.2);
    EXPECT_GT(model.events.size(), count);
}

TEST_F(GmControllers, OwnVibratoComesInAfterItsDelay) {
    map.programs.vibrato[0] = {
        .hz = 6.0F, .cents = 20.0F, .delay_seconds = 0.5F, .rise_seconds = 0.2F};
    const auto highest_within = [this](double seconds) {
        double highest = 0.0;
        for (double t = 0.0; t < seconds; t += 0.002) {
            wait(0.002);
            highest = std::max(highest, bend_semitones());
        }
        return highest;
    };
    note_on(60);
    EXPECT_EQ(highest_within(0.49), 0.0);
    wait(0.25);
    EXPECT_NEAR(highest_within(0.3), 0.2, 0.01);
}

TEST_F(GmControllers, RelativeControllersMoveTheSound) {
    bytes[CTRL_FILTER1_CUTOFF] = 60;
    bytes[CTRL_ENV1_ATTACK] = 40;
    note_on(60);
    control(74, 127);
    EXPECT_EQ(byte(CTRL_FILTER1_CUTOFF), 85U);
    control(71, 0);
    EXPECT_EQ(byte(CTRL_FILTER1_RESONANCE), 0U); // 25 - 40
    control(73, 127);
    EXPECT_GT(byte(CTRL_ENV1_ATTACK), 80U);
    EXPECT_EQ(byte(CTRL_ENV2_ATTACK), bytes[CTRL_ENV2_ATTACK]); // shapes no amplitude here
    control(73, 64);
    EXPECT_EQ(byte(CTRL_ENV1_ATTACK), 40U);
}

TEST_F(GmControllers, ChorusLeavesASoundsOwnEffectAlone) {
    note_on(60);
    control(93, 100);
    EXPECT_EQ(byte(CTRL_CHANFX2_TYPE), 2U);
    EXPECT_EQ(byte(CTRL_CHANFX2_WET), chorus_byte(100));
    control(93, 0);
    EXPECT_EQ(byte(CTRL_CHANFX2_TYPE), 0U);
    ControllerBytes delayed = bytes;
    delayed[CTRL_CHANFX2_TYPE] = 1;
    delayed[CTRL_CHANFX2_WET] = 33;
    sounds.melodic[5] = &delayed;
    use();
    control(93, 100);
    send({0xC0, 5});
    note_on(60);
    EXPECT_EQ(model.strikes.back().bytes[CTRL_CHANFX2_TYPE], 1);
    EXPECT_EQ(model.strikes.back().bytes[CTRL_CHANFX2_WET], 33);
}

TEST_F(GmControllers, ResetFollowsRp015) {
    note_on(60);
    choose_rpn(0);
    control(6, 12);
    control(1, 100);
    control(7, 90);
    control(10, 20);
    control(11, 30);
    control(91, 100);
    control(74, 90);
    bend(0);
    control(121, 0);
    wait(0.01);
    EXPECT_EQ(bend_semitones(), 0.0);
    const GmChannel& channel = dialect.channel(0);
    EXPECT_EQ(channel.value(1), 0U);
    EXPECT_EQ(channel.value(11), 127U);
    EXPECT_EQ(channel.value(7), 90U);
    EXPECT_EQ(channel.value(10), 20U);
    EXPECT_EQ(channel.value(91), 100U);
    EXPECT_EQ(channel.value(74), 90U);
    control(6, 3); // no parameter is chosen any more
    EXPECT_NEAR(full_bend(), 12.0, 0.003);
}

TEST_F(GmControllers, GmOnRestoresEverything) {
    choose_rpn(0);
    control(6, 12);
    control(7, 10);
    send({0xC0, 40});
    send({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x12, 0x15, 0x01, 0x18, 0xF7}); // channel 2: drums
    EXPECT_TRUE(dialect.channel(1).is_rhythm);
    note_on(60);
    send(GM_ON);
    EXPECT_EQ(model.num_sounding(), 0U);
    EXPECT_EQ(model.channels[0][0].silences, 1U);
    EXPECT_EQ(model.channels[MELODIC_ENGINE][0].master_silences, 1U);
    EXPECT_EQ(model.channels[RHYTHM_ENGINE][0].master_silences, 1U);
    EXPECT_EQ(dialect.channel(0).value(7), 100U);
    EXPECT_EQ(dialect.channel(0).program, 0);
    EXPECT_FALSE(dialect.channel(1).is_rhythm);
    EXPECT_TRUE(dialect.channel(9).is_rhythm);
    note_on(60);
    EXPECT_NEAR(full_bend(), 2.0, 0.002);
}

TEST_F(GmControllers, NrpnReachesTheEnginesOwnNumbers) {
    note_on(60);
    control(99, 0x54);
    control(98, CTRL_ENV1_DECAY);
    control(6, 99);
    EXPECT_EQ(byte(CTRL_ENV1_DECAY), 99U);
    control(99, 0x55);
    control(98, CTRL_OSC1_TYPE - 128);
    control(6, 127); // clamped to the last choice
    EXPECT_EQ(byte(CTRL_OSC1_TYPE), 5U);
    control(99, 0x54);
    control(98, CTRL_REVERB_ROOMSIZE);
    control(6, 11);
    EXPECT_EQ(byte(CTRL_REVERB_ROOMSIZE), 11U);
    control(98, CTRL_PITCH_BEND_MSB); // not this way
    control(6, 0);
    EXPECT_EQ(byte(CTRL_PITCH_BEND_MSB), 64U);
    send({0xC0, 1});
    note_on(62);
    EXPECT_EQ(model.strikes.back().bytes[CTRL_ENV1_DECAY], bytes[CTRL_ENV1_DECAY]);
    send(GM_ON);
    EXPECT_EQ(byte(CTRL_REVERB_ROOMSIZE), default_controller_bytes()[CTRL_REVERB_ROOMSIZE]);
}

TEST_F(GmControllers, LawsAndVelocitySetEachNote) {
    bytes[CTRL_ENV1_DECAY] = 100;
    map.programs.add({.program = 0,
                      .controller = uint8_t(CTRL_ENV1_DECAY),
                      .per_octave = -12.0F,
                      .per_velocity = 3.0F});
    map.programs.sort();
    note_on(60, 100);
    note_on(84, 100);
    note_on(36, 124);
    note_on(127, 1);
    EXPECT_EQ(model.strikes[0].bytes[CTRL_ENV1_DECAY], 100);
    EXPECT_EQ(model.strikes[1].bytes[CTRL_ENV1_DECAY], 76);
    EXPECT_EQ(model.strikes[2].bytes[CTRL_ENV1_DECAY], 126);
    EXPECT_EQ(model.strikes[3].bytes[CTRL_ENV1_DECAY], 8);
    bytes[CTRL_AMPLITUDE_INFLUENCE_SOURCE] = 1; // squares the velocity itself
    bytes[CTRL_AMPLITUDE_INFLUENCE_AMOUNT] = 127;
    note_on(61, 64);
    EXPECT_GT(model.strikes.back().velocity, 60U);
}

} // namespace
} // namespace tarquil
