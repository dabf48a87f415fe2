// Tests of the tempo that LV2 hosts tell.

#include <gtest/gtest.h>

#include <limits>

#include "tests/formats/common/tempo_song.h"
#include "tests/formats/lv2/lv2_host.h"

namespace tarquil {

namespace {

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
