// Tests of the tempo that LV2 hosts tell.

#include <gtest/gtest.h>

#include <limits>

#include "tests/formats/common/tempo_song.h"
#include "tests/formats/lv2/lv2_host.h"

namespace tarquil {

namespace {

// Beats are eighths here.
constexpr int BEATS_PER_QUARTER = 2;

Lv2Host::Position position_of(uint32_t frame, double rate) {
    const double bar = std::floor(position_at(frame, rate) / BEATS_PER_BAR);
    return {.beats_per_minute = BEATS_PER_QUARTER * tempo_at(frame),
            .bar = int64_t(bar),
            .bar_beat = BEATS_PER_QUARTER * (position_at(frame, rate) - bar_start_at(frame, rate)),
            .beats_per_bar = BEATS_PER_QUARTER * BEATS_PER_BAR,
            .beat_unit = 4 * BEATS_PER_QUARTER,
            .speed = 1.0};
}

StereoSound song(double rate, bool with_tempo) {
    Lv2Host host(rate, following_state());
    EXPECT_TRUE(host.is_loaded());
    render_tempo_song(
        [&](uint32_t frame) {
            // Hosts speak when something changes.
            if (with_tempo && (frame == 0 || frame == TEMPO_CHANGE))
                host.add_position(0, position_of(frame, rate));
        },
        [&](const auto& messages, float*, float*, uint32_t frames) {
            for (const SongMessage& message : messages)
                host.add_midi(message.frame,
                              {message.bytes[0], message.bytes[1], message.bytes[2]});
            host.run(frames);
        });
    return {host.left, host.right};
}

TEST(Lv2Tempo, ASongFollowsTheHost) {
    for (const double rate : {44100.0, 48000.0}) {
        EXPECT_EQ(song(rate, true).hash(), hosted_tempo_song(rate).hash()) << rate;
        EXPECT_NE(song(rate, false).hash(), hosted_tempo_song(rate).hash()) << rate;
    }
}

TEST(Lv2Tempo, WhatAPositionDoesNotSayStaysAndNonsenseIsNotTaken) {
    constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
    const auto sound = [&](const std::vector<Lv2Host::Position>& told) {
        Lv2Host host(44100, following_state());
        host.add_midi(0, {0x90, 60, 100});
        for (const Lv2Host::Position& position : told)
            host.add_position(0, position);
        host.run(30000, 1000);
        return host.left;
    };
    const Lv2Host::Position first{150.0, 1, 2.0, 4.0, 4, 1.0};
    const std::vector<float> wanted = sound({first});
    EXPECT_EQ(sound({first, {NONE, 1, NONE, NONE, 4, NONE}}), wanted);
    EXPECT_EQ(sound({first, {1e30, 1, 2.0, 4.0, 4, 1.0}}), wanted);
    EXPECT_EQ(sound({first, {150.0, 1, 2.0, 4.0, 0, 1.0}}), wanted); // beats of no length
    EXPECT_NE(sound({first, {170.0, 1, NONE, NONE, 4, NONE}}), wanted);
}

} // namespace

} // namespace tarquil
