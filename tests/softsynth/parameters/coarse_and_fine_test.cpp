// Tests of pairs of controllers that are one value.

#include "softsynth/parameters/coarse_and_fine.h"

#include <gtest/gtest.h>

#include <cmath>

#include "softsynth/parameters/influence.h"
#include "softsynth/voices/pitch_bend.h"

namespace tarquil {

namespace {

constexpr CoarseAndFine PITCH = amount_pair(FIRST_PITCH_SLOT);
constexpr CoarseAndFine RESONANCE = amount_pair(RESONANCE_SLOT);
constexpr CoarseAndFine CUTOFF = amount_pair(FIRST_CUTOFF_SLOT);
constexpr CoarseAndFine AMPLITUDE = amount_pair(AMPLITUDE_SLOT);

// Whatever is set, the bytes for it are at most half a fine step away and never multiply.
TEST(CoarseAndFineTest, EveryQuantityWithinReachIsSet) {
    for (const CoarseAndFine& pair : {PITCH, RESONANCE, CUTOFF, AMPLITUDE, BEND_PAIR}) {
        const double largest = largest_pair_quantity(pair);
        const double step = pair_quantity(pair, {0, 1}) - pair_quantity(pair, {0, 0});
        for (double part = -1.0; part < 0.98; part += 0.000137) {
            const PairBytes bytes = nearest_pair(pair, part * largest);
            ASSERT_NEAR(pair_quantity(pair, bytes), part * largest, 0.51 * step) << part;
        }
        EXPECT_EQ(nearest_pair(pair, 0.0),
                  (PairBytes{64, pair.coarse == BEND_PAIR.coarse ? 0 : 64}));
        EXPECT_EQ(nearest_pair(pair, 1e9).fine, 127);
        EXPECT_EQ(nearest_pair(pair, -1e9), (PairBytes{0, 0}));
    }
    EXPECT_EQ(nearest_pair(PITCH, 1e9).coarse, MULTIPLYING_AMOUNT - 1);
    EXPECT_EQ(nearest_pair(BEND_PAIR, 1e9).coarse, 127);
}

TEST(CoarseAndFineTest, EachTargetHasItsUnits) {
    EXPECT_EQ(pair_text(PITCH, 1.0), "+12 st");
    EXPECT_EQ(pair_text(PITCH, -0.5), "-12 st");
    EXPECT_EQ(pair_text(PITCH, 0.0029), "+5 ct");
    EXPECT_EQ(pair_text(PITCH, -1.0), "-100 %"); // of the frequency: nothing is left
    EXPECT_EQ(pair_text(PITCH, -1e-9), "0 ct");
    EXPECT_EQ(pair_text(CUTOFF, 1.5), "+1.5 oct");
    EXPECT_EQ(pair_text(CUTOFF, -0.5), "-6 st");
    EXPECT_EQ(pair_text(CUTOFF, 0.05), "+60 ct");
    EXPECT_EQ(pair_text(RESONANCE, -0.25), "-0.25 Q");
    EXPECT_EQ(pair_text(AMPLITUDE, 0.0039), "+0.39 %");
    EXPECT_EQ(pair_text(AMPLITUDE, -0.5), "-50 %");
    EXPECT_EQ(pair_text(BEND_PAIR, pair_quantity(BEND_PAIR, {64, 0})), "0 ct");
    EXPECT_EQ(pair_text(BEND_PAIR, pair_quantity(BEND_PAIR, {0, 0})), "-12 st");
}

TEST(CoarseAndFineTest, ABendIsWhatTheEngineBendsBy) {
    generate_pitch_bend_table();
    for (int bend = 0; bend < PITCH_BEND_STEPS; bend += 61)
        EXPECT_NEAR(std::exp2(pair_quantity(BEND_PAIR, {bend / 128, bend % 128})),
                    double(pitch_bend_mulfac_table[bend]), 1e-6);
}

TEST(CoarseAndFineTest, AnyFittingUnitIsTyped) {
    const auto typed = [](const CoarseAndFine& pair, const char* text, const char* shown = "0 ct") {
        return parse_pair(pair, text, shown).value_or(-99.0);
    };
    EXPECT_NEAR(typed(PITCH, "12"), 0.00696, 1e-5) << "cents, as it is shown";
    EXPECT_NEAR(typed(PITCH, "12", "+1 st"), 1.0, 1e-9);
    EXPECT_NEAR(typed(PITCH, "-1 oct"), -0.5, 1e-9);
    EXPECT_NEAR(typed(PITCH, "0,39 %"), 0.0039, 1e-9);
    EXPECT_NEAR(typed(CUTOFF, "+6 semitones"), 0.5, 1e-9);
    EXPECT_NEAR(typed(CUTOFF, "120 cents", "+1 oct"), 0.1, 1e-9);
    EXPECT_NEAR(typed(AMPLITUDE, "5", "0 %"), 0.05, 1e-9);
    EXPECT_NEAR(typed(RESONANCE, ".5 q"), 0.5, 1e-9);
    EXPECT_NEAR(typed(BEND_PAIR, "2 st"), 2.0 / 12, 1e-9);
    for (const char* const text : {"", "st", "much", "inf", "nan", "3 Hz", "1 q", "5 % of it"})
        EXPECT_FALSE(parse_pair(CUTOFF, text, "0 ct")) << text;
    EXPECT_FALSE(parse_pair(CUTOFF, "5 %", "0 ct"));
    EXPECT_FALSE(parse_pair(AMPLITUDE, "1 st", "0 %"));
    EXPECT_FALSE(parse_pair(RESONANCE, "5 %", "0 Q"));
}

TEST(CoarseAndFineTest, WhatIsShownMeansItself) {
    for (const CoarseAndFine& pair : {PITCH, RESONANCE, CUTOFF, AMPLITUDE, BEND_PAIR}) {
        const double largest = largest_pair_quantity(pair);
        for (double part = -1.0; part <= 1.0; part += 0.00173) {
            const std::string shown = pair_text(pair, part * largest);
            const auto meant = parse_pair(pair, shown, "");
            ASSERT_TRUE(meant) << shown;
            EXPECT_EQ(pair_text(pair, *meant), shown);
        }
    }
}

} // namespace

} // namespace tarquil
