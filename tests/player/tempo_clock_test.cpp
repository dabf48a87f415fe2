// Tests of the tempo and the place that a player makes of what a host says.

#include "player/tempo_clock.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarquil {

namespace {

HostTempo playing(double tempo, double position, double bar_start = 0.0, double bar_length = 4.0) {
    return {.quarters_per_minute = tempo,
            .place = HostTempo::Place{position, bar_start, bar_length}};
}

TEST(TempoClock, GoesOnAtTheLastTempoAndFollowsFromTheRunThatHoldsTheTime) {
    TempoClock clock;
    EXPECT_EQ(clock.advance(0, 64).samples_per_quarter, 22050.0);
    // Said of sample 100: at 64, where the run begins, the song was 36 samples before that.
    clock.add(playing(100.0, 7.0, 5.0, 3.0), 100);
    const Tempo now = clock.advance(64, 64);
    EXPECT_EQ(now.samples_per_quarter, 26460.0);
    EXPECT_NEAR(now.position, 7.0 - 36.0 / 26460.0, 1e-12);
    EXPECT_EQ(now.bar_start, 5.0);
    EXPECT_EQ(now.bar_length, 3.0);
    // A host that stands gives a tempo, and no place.
    clock.add({.quarters_per_minute = 120.0}, 128 + 64);
    EXPECT_NEAR(clock.advance(128, 64).position, 7.0 + 28.0 / 26460.0, 1e-12);
    const Tempo later = clock.advance(192, 22050);
    EXPECT_EQ(later.samples_per_quarter, 22050.0);
    EXPECT_NEAR(clock.advance(192 + 22050, 64).position, later.position + 1.0, 1e-9);
}

TEST(TempoClock, WhatIsToBeExpectedChangesNothingAndJumpsAreTaken) {
    TempoClock clock;
    TempoClock alone;
    clock.add(playing(120.0, 2.0), 0);
    alone.add(playing(120.0, 2.0), 0);
    for (uint32_t time = 0; time < 6400; time += 64) {
        // Half a tick of 960 to the quarter away, this side and that.
        const double error = (time / 64 % 2 == 0 ? 1.0 : -1.0) / 1920.0;
        if (time > 0)
            clock.add(playing(120.0, 2.0 + time / 22050.0 + error), time);
        EXPECT_EQ(clock.advance(time, 64).position, alone.advance(time, 64).position);
    }
    clock.add(playing(120.0, 16.0), 6400);
    EXPECT_EQ(clock.advance(6400, 64).position, 16.0);
}

TEST(TempoClock, NonsenseIsNotTaken) {
    constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
    constexpr double INFINITE = std::numeric_limits<double>::infinity();
    TempoClock clock;
    clock.add(playing(90.0, 1.0), 0);
    clock.advance(0, 64);
    uint32_t time = 64;
    for (const double value : {NAN_VALUE, INFINITE, -INFINITE, 1e300, -1e300}) {
        const double expected = clock.place().position;
        clock.add(playing(value, value, value, value), time);
        const Tempo now = clock.advance(time, 64);
        EXPECT_EQ(now.samples_per_quarter, 29400.0);
        EXPECT_EQ(now.position, expected);
        EXPECT_EQ(now.bar_length, 4.0);
        time += 64;
    }
    for (const double tempo : {0.5, 5000.0}) {
        clock.add({.quarters_per_minute = tempo}, time);
        EXPECT_EQ(clock.advance(time, 64).samples_per_quarter, 29400.0);
        time += 64;
    }
    for (const double length : {NAN_VALUE, -1.0, INFINITE}) {
        clock.add(playing(0.0, 1.0, 0.0, length), time);
        EXPECT_EQ(clock.advance(time, 64).bar_length, 0.0) << length;
        time += 64;
    }
}

TEST(TempoClock, OfTooManyTheFirstIsLost) {
    TempoClock clock;
    constexpr uint32_t TOO_MANY = 65;
    for (uint32_t i = 0; i < TOO_MANY; i++)
        EXPECT_EQ(clock.add({.quarters_per_minute = 100.0 + i}, 64 * i), i + 1 < TOO_MANY);
    EXPECT_FALSE(clock.has_room());
    for (uint32_t i = 0; i < TOO_MANY; i++) {
        clock.advance(64 * i, 64);
        EXPECT_EQ(clock.quarters_per_minute(), i == 0 ? TempoClock::FIRST_TEMPO : 100.0 + i);
    }
    EXPECT_TRUE(clock.has_room());
    clock.add({.quarters_per_minute = 60.0}, 6000);
    clock.move_clock_back(5900);
    clock.advance(64, 64);
    EXPECT_EQ(clock.quarters_per_minute(), 60.0);
}

} // namespace

} // namespace tarquil
