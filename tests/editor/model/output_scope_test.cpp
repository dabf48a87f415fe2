// Tests of the scope: levels over frequency, peaks, the pause, and where the picture starts.

#include "editor/model/output_scope.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "editor/model/bank_synth.h"

namespace tarquil {

namespace {

class OutputScopeTest : public testing::Test {
  protected:
    OutputScopeTest() { scope.follow(synth, true); }

    // From frame `shift` on.
    void play(double hertz, double level, int shift = 0) {
        synth.output.resize(OutputScope::NUM_FRAMES);
        for (size_t i = 0; i < synth.output.size(); i++)
            synth.output[i] = float(
                level * std::sin(2 * std::numbers::pi * hertz * (double(i) + shift) / SAMPLE_RATE));
    }
    static double hertz_of(size_t index) {
        return 20.0 * std::pow(1000.0, double(index) / (OutputScope::NUM_LEVELS - 1));
    }
    static size_t highest(std::span<const float> levels) {
        return size_t(std::max_element(levels.begin(), levels.end()) - levels.begin());
    }

    BankSynth synth;
    OutputScope scope;
};

TEST_F(OutputScopeTest, ASineStandsAtItsFrequencyWithItsLevel) {
    for (const double hertz : {60.0, 441.0, 5000.0, 15000.0}) {
        play(hertz, 0.5);
        scope.update(synth, 10.0);
        const size_t index = highest(scope.levels());
        EXPECT_NEAR(hertz_of(index) / hertz, 1.0, 0.05) << hertz;
        EXPECT_NEAR(scope.levels()[index], -6.0, 1.5) << "a Hann window loses up to 1.4 dB";
        EXPECT_LT(scope.levels()[index > 240 ? 50 : 400], -80.0F) << hertz;
    }
}

TEST_F(OutputScopeTest, LevelsFallAndPeaksStayUntilTheyAreForgotten) {
    play(441.0, 1.0);
    scope.update(synth, 0.1);
    const size_t index = highest(scope.levels());
    const float before = scope.levels()[index];
    std::fill(synth.output.begin(), synth.output.end(), 0.0F);
    scope.update(synth, 0.5);
    EXPECT_NEAR(scope.levels()[index], before - 30.0F, 0.1F) << "60 dB a second";
    EXPECT_EQ(scope.peaks()[index], before);
    scope.clear_peaks();
    EXPECT_EQ(scope.peaks()[index], OutputScope::LOWEST_DB);
    while (scope.update(synth, 1.0)) {
    }
    EXPECT_EQ(scope.levels()[index], OutputScope::LOWEST_DB) << "silence ends the drawing";
}

TEST_F(OutputScopeTest, ASteadyToneStandsStillAndAPauseKeepsThePicture) {
    std::vector<float> first;
    for (int shift = 0; shift < 100; shift += 9) {
        play(300.0, 0.1, shift);
        ASSERT_TRUE(scope.update(synth, 0.03));
        const std::vector<float> now(scope.left().begin(), scope.left().end());
        ASSERT_EQ(now.size(), 882U) << "20 ms";
        if (first.empty())
            first = now;
        for (size_t i = 0; i < 800; i++)
            ASSERT_NEAR(now[i], first[i], 0.006) << shift;
    }
    scope.is_paused = true;
    play(3000.0, 1.0);
    EXPECT_FALSE(scope.update(synth, 0.03));
    EXPECT_EQ(std::vector<float>(scope.left().begin(), scope.left().end()).size(), 882U);
}

TEST_F(OutputScopeTest, TheRangeGrowsAtOnceAndShrinksAfterAWhile) {
    play(300.0, 0.1);
    scope.update(synth, 1.0);
    EXPECT_EQ(scope.range(), 1.0);
    scope.update(synth, 1.5);
    EXPECT_EQ(scope.range(), 0.125);
    play(300.0, 0.9);
    scope.update(synth, 0.03);
    EXPECT_EQ(scope.range(), 1.0);
}

TEST_F(OutputScopeTest, WhatNoPageShowsIsNotWatched) {
    EXPECT_EQ(synth.watched, ScopeSource::WHOLE);
    scope.source = ScopeSource::PROGRAM;
    scope.follow(synth, true);
    EXPECT_EQ(synth.watched, ScopeSource::PROGRAM);
    scope.follow(synth, false);
    EXPECT_EQ(synth.watched, ScopeSource::NOTHING);
}

} // namespace

} // namespace tarquil
