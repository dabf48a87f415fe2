// Tests of the way between two versions of a sound.

#include "editor/model/morph.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "editor/model/bank_synth.h"
#include "editor/model/editor_model.h"
#include "softsynth/parameters/coarse_and_fine.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/osc_type.h"
#include "tests/support/bank_text.h"

namespace tarquil {

namespace {

ControllerBytes random_sound(std::mt19937& random) {
    ControllerBytes bytes = default_controller_bytes();
    for (const ControllerInfo& info : channel_controller_rows())
        bytes[info.number] = uint8_t(filter_controller(info.number, int(random() % 128)));
    return bytes;
}

TEST(Morph, EndsAreExactAndEveryByteLiesBetweenThem) {
    std::mt19937 random(7);
    for (int round = 0; round < 50; round++) {
        const ControllerBytes a = random_sound(random);
        const ControllerBytes b = random_sound(random);
        EXPECT_EQ(morphed(a, b, 0.0), a);
        EXPECT_EQ(morphed(a, b, 1.0), b);
        EXPECT_EQ(morphed(a, a, 0.3), a);
        for (const double at : {0.001, 0.3, 0.5, 0.999}) {
            const ControllerBytes between = morphed(a, b, at);
            for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
                const ControllerInfo* const info = find_controller(number);
                if (info == nullptr || info->scope != ControllerScope::CHANNEL) {
                    EXPECT_EQ(between[number], a[number]) << "it is no program's";
                    continue;
                }
                if (!info->choices.labels.empty()) {
                    EXPECT_EQ(between[number], (at < 0.5 ? a : b)[number]) << info->name;
                    continue;
                }
                bool is_fine = number == BEND_PAIR.fine;
                for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++)
                    is_fine = is_fine || number == amount_pair(slot).fine;
                if (is_fine) // what its coarse one leaves
                    continue;
                EXPECT_GE(between[number] + 1, std::min(a[number], b[number])) << info->name;
                EXPECT_LE(between[number] - 1, std::max(a[number], b[number])) << info->name;
            }
        }
    }
}

TEST(Morph, GoesEvenlyByTheLawOfEachControl) {
    ControllerBytes a = default_controller_bytes();
    ControllerBytes b = a;
    a[CTRL_FILTER1_TYPE] = b[CTRL_FILTER1_TYPE] = 1;
    a[CTRL_FILTER1_DEPTH] = b[CTRL_FILTER1_DEPTH] = 1;
    a[CTRL_FILTER1_CUTOFF] = 20;
    b[CTRL_FILTER1_CUTOFF] = 120;
    a[CTRL_MAIN_VOLUME] = 20;
    b[CTRL_MAIN_VOLUME] = 120;
    const auto quantity = [](const ControllerBytes& bytes, unsigned number) {
        return controller_quantity(number, bytes[number]);
    };
    const ControllerBytes middle = morphed(a, b, 0.5);
    const double in_octaves =
        std::sqrt(quantity(a, CTRL_FILTER1_CUTOFF) * quantity(b, CTRL_FILTER1_CUTOFF));
    EXPECT_NEAR(quantity(middle, CTRL_FILTER1_CUTOFF) / in_octaves, 1.0, 0.001);
    const double cube_root =
        (std::cbrt(quantity(a, CTRL_MAIN_VOLUME)) + std::cbrt(quantity(b, CTRL_MAIN_VOLUME))) / 2;
    EXPECT_NEAR(std::cbrt(quantity(middle, CTRL_MAIN_VOLUME)), cube_root, 0.001);
}

TEST(Morph, AnAmountAndItsFineAmountAreOneValue) {
    const CoarseAndFine rows = amount_pair(0);
    ControllerBytes a = default_controller_bytes();
    a[CTRL_OSC1_TYPE] = 1;
    a[CTRL_OSC1_INFLUENCE_SOURCE] = INFL_LFO1;
    ControllerBytes b = a;
    a[rows.coarse] = 64; // a little down, then a little up
    a[rows.fine] = 10;
    b[rows.coarse] = 63;
    b[rows.fine] = 120;
    const auto amount = [&](const ControllerBytes& bytes) {
        return pair_quantity(rows, {bytes[rows.coarse], bytes[rows.fine]});
    };
    const double half_a_step =
        (pair_quantity(rows, {64, 11}) - pair_quantity(rows, {64, 10})) / 2 + 1e-9;
    for (double at = 0.0; at <= 1.0; at += 0.05)
        EXPECT_NEAR(amount(morphed(a, b, at)), amount(a) + at * (amount(b) - amount(a)),
                    half_a_step)
            << at;
    b[rows.coarse] = MULTIPLYING_AMOUNT;
    EXPECT_EQ(morphed(a, b, 0.49)[rows.coarse], 64) << "between the two there is nothing";
    EXPECT_EQ(morphed(a, b, 0.5)[rows.coarse], MULTIPLYING_AMOUNT);
}

TEST(Morph, WhatMeansSomethingElseOrNothingInOneOfTheTwoIsNotMixed) {
    ControllerBytes a = default_controller_bytes();
    ControllerBytes b = a;
    const EffectRows& effect = STEREO_EFFECT_ROWS;
    a[effect.type] = STEREO_EFFECT_DELAY;
    b[effect.type] = STEREO_EFFECT_CHORUS;
    a[effect.first_parameter] = 100;
    b[effect.first_parameter] = 20;
    // The third oscillator is heard in the second sound only.
    a[CTRL_OSC3_TYPE] = b[CTRL_OSC3_TYPE] = OSC_NONE + 1;
    a[CTRL_OSC3_VOLUME] = 0;
    b[CTRL_OSC3_VOLUME] = 100;
    a[CTRL_OSC3_COARSE_TUNE] = 10;
    b[CTRL_OSC3_COARSE_TUNE] = 64;
    for (const double at : {0.1, 0.49, 0.5, 0.9}) {
        const ControllerBytes between = morphed(a, b, at);
        EXPECT_EQ(between[effect.first_parameter], at < 0.5 ? 100 : 20) << at;
        EXPECT_EQ(between[CTRL_OSC3_COARSE_TUNE], 64) << at;
        EXPECT_EQ(between[CTRL_OSC3_VOLUME], std::lround(100 * at));
    }
}

class MorphModelTest : public testing::Test {
  protected:
    MorphModelTest() {
        model.set_value(CTRL_PANNING, 0);
        model.compare();
        model.set_value(CTRL_PANNING, 100);
    }
    ControllerBytes sound() { return synth.bank.get_instrument(0).get_bytes(); }

    BankSynth synth;
    EditorModel model{synth};
};

TEST_F(MorphModelTest, IsOneStepThatChangesTheProgramAlone) {
    const std::string before = text_of(synth.bank);
    const ControllerBytes b = sound();
    ASSERT_TRUE(model.start_morph());
    EXPECT_EQ(model.morph_position(), 1.0) << "B is heard";
    for (double at = 1.0; at >= 0.5; at -= 0.01)
        model.set_morph(at);
    model.set_morph(0.4);
    EXPECT_EQ(model.value(CTRL_PANNING), 40);
    EXPECT_EQ(sound()[CTRL_PANNING], 40) << "what is shown sounds";
    model.keep_morph();
    EXPECT_FALSE(model.morph_position());
    EXPECT_EQ(model.undo_name(), "Morph");
    ControllerBytes kept = b;
    kept[CTRL_PANNING] = 40;
    EXPECT_EQ(sound(), kept);
    model.undo();
    EXPECT_EQ(text_of(synth.bank), before);
    EXPECT_NE(model.undo_name(), "Morph");
    model.compare();
    EXPECT_EQ(model.value(CTRL_PANNING), 0) << "the other version is as it was";
}

TEST_F(MorphModelTest, LeavesNothingBehindWhenItIsDropped) {
    const std::string before = text_of(synth.bank);
    const std::string last_step = model.undo_name();
    ASSERT_TRUE(model.start_morph());
    model.set_morph(0.0);
    model.drop_morph();
    EXPECT_EQ(text_of(synth.bank), before);
    EXPECT_EQ(model.undo_name(), last_step);
    model.compare(); // A
    ASSERT_TRUE(model.start_morph());
    EXPECT_EQ(model.morph_position(), 0.0);
    model.set_morph(1.0);
    const ControllerBytes third = synth.bank.get_instrument(3).get_bytes();
    synth.program = 3; // by a host
    model.refresh();
    EXPECT_FALSE(model.morph_position());
    model.set_morph(0.5);
    EXPECT_EQ(synth.bank.get_instrument(3).get_bytes(), third);
    EXPECT_EQ(sound()[CTRL_PANNING], 100);
    model.select_program(2);
    EXPECT_FALSE(model.start_morph()) << "its versions are the same";
}

TEST(MorphRun, GoesOnceOrToAndFro) {
    MorphRun run;
    run.start(0.5);
    EXPECT_DOUBLE_EQ(run.advance(0.25), 0.75);
    EXPECT_DOUBLE_EQ(run.advance(0.5), 1.0);
    EXPECT_FALSE(run.is_running());
    run.start(1.0);
    EXPECT_DOUBLE_EQ(run.advance(0.125), 0.125) << "again from the start";
    run.swings = true;
    run.start(0.75);
    EXPECT_DOUBLE_EQ(run.advance(0.5), 0.75);
    EXPECT_DOUBLE_EQ(run.advance(1.0), 0.25);
    EXPECT_DOUBLE_EQ(run.advance(20.0), 0.25);
    EXPECT_TRUE(run.is_running());
}

TEST(MorphLength, IsReadInSecondsAndNotes) {
    const auto seconds = [](const char* text) {
        const auto length = parse_morph_length(text);
        return length ? length->seconds(60.0) : -1.0;
    };
    EXPECT_EQ(seconds("2.5 s"), 2.5);
    EXPECT_EQ(seconds(" 12"), 12.0);
    EXPECT_EQ(seconds("1/1"), 4.0);
    EXPECT_EQ(seconds("1/4 D"), 1.5);
    for (const char* const refused : {"", "s", "0", "0.05 s", "601", "fast", "-3", "1/0", "3 m"})
        EXPECT_EQ(seconds(refused), -1.0) << refused;
    for (const char* const text : {"4 s", "0.1 s", "2/1", "1/8 T"})
        EXPECT_EQ(parse_morph_length(text)->text(), text);
}

} // namespace

} // namespace tarquil
