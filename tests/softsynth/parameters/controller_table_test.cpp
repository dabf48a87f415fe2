// Freezes the controller table: numbers, keys, order, scopes, mappings.

#include "softsynth/parameters/controller_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace tarquil {

namespace {

// FNV-1a over every row's number and key: any change of a number, a key or the order shows.
uint64_t hash_of_rows() {
    uint64_t hash = 0xcbf29ce484222325;
    for (const ControllerInfo& info : controller_rows()) {
        for (const char c : std::to_string(unsigned(info.number)) + " " + info.key + "\n") {
            hash ^= uint8_t(c);
            hash *= 0x100000001b3;
        }
    }
    return hash;
}

TEST(ControllerTable, NumbersKeysAndOrderAreFrozen) {
    // Hosts address parameters by position and files by key: a new row is only ever appended, and
    // this number then changes on purpose.
    EXPECT_EQ(hash_of_rows(), 0x32957D0BC247F175ULL);
    EXPECT_STREQ(controller_rows()[0].key, "main_volume");
    EXPECT_STREQ(controller_rows()[112].key, "chan_max_voices");
    EXPECT_STREQ(controller_rows()[113].key, "global_filter1_type");
    EXPECT_STREQ(controller_rows()[171].key, "fcmpr_band34_crossover_freq");
}

TEST(ControllerTable, EveryNumberHasItsScope) {
    unsigned mapped = 0;
    for (unsigned number = 0; number < 300; number++) {
        const ControllerInfo* info = find_controller(number);
        EXPECT_FALSE(is_global_controller(number) && is_channel_controller(number)) << number;
        EXPECT_EQ(info != nullptr, is_global_controller(number) || is_channel_controller(number));
        const bool constant = (number >= 12 && number <= 15) || (number >= 21 && number <= 24) ||
                              (number >= 30 && number <= 53);
        EXPECT_EQ(is_constant_controller(number), constant) << number;
        const bool global =
            constant || (number >= 54 && number <= 56) || (number >= 182 && number <= 205);
        EXPECT_EQ(is_global_controller(number), global) << number;
        if (info != nullptr && info->mapping.exists)
            mapped++;
    }
    EXPECT_EQ(mapped, 124U);
    for (const unsigned number : {0U, 6U, 8U, 9U, 11U, 16U, 20U, 27U, 64U, 83U, 101U, 127U, 147U})
        EXPECT_EQ(find_controller(number), nullptr) << number;
}

TEST(ControllerTable, EveryByteSurvivesTheMapping) {
    for (const ControllerInfo& info : controller_rows()) {
        for (int value = 0; value < 128; value++)
            ASSERT_EQ(map_float_to_char(info.number, map_char_to_float(info.number, value)), value)
                << info.key;
    }
}

TEST(ControllerTable, ValuesOutOfRangeAreClampedWithTheMessage) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(map_float_to_char(7, 1e30F), 127);
    EXPECT_EQ(map_float_to_char(7, -3.0F), 0);
    EXPECT_EQ(map_float_to_char(7, std::numeric_limits<float>::infinity()), 127);
    EXPECT_EQ(map_float_to_char(7, -std::numeric_limits<float>::infinity()), 0);
    EXPECT_EQ(map_float_to_char(7, std::numeric_limits<float>::quiet_NaN()), 0);
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_NE(printed.find("Controller 7 value -3.000000 out of range, clamping to lowest\n"),
              std::string::npos);
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 5);
}

TEST(ControllerTable, ListChoicesAreClampedAndNothingElse) {
    EXPECT_EQ(filter_controller(CTRL_CHANFX2_PARAM4, 77), 5);
    EXPECT_EQ(filter_controller(CTRL_OSC1_TYPE, 77), 5);
    EXPECT_EQ(filter_controller(CTRL_FILTER1_TYPE, 127), 24);
    EXPECT_EQ(filter_controller(CTRL_FILTER1_DEPTH, 100), 4);
    EXPECT_EQ(filter_controller(CTRL_CHANFX2_TYPE, 9), 3);
    EXPECT_EQ(filter_controller(CTRL_OSC1_INFLUENCE_SOURCE, 127), 5);
    EXPECT_EQ(filter_controller(CTRL_OSC2_INFLUENCE_SOURCE, 127), 6);
    EXPECT_EQ(filter_controller(CTRL_OSC3_INFLUENCE_SOURCE, 127), 7);
    EXPECT_EQ(filter_controller(CTRL_RESONANCE1_INFLUENCE_SOURCE, 127), 8);
    EXPECT_EQ(filter_controller(CTRL_AMPLITUDE_INFLUENCE_SOURCE, 127), 9);
    EXPECT_EQ(filter_controller(CTRL_CHAN_FILTER1_TYPE, 127), 8);
    EXPECT_EQ(filter_controller(CTRL_GLOBAL_FILTER6_TYPE, 127), 8);
    EXPECT_EQ(filter_controller(CTRL_CHAN_MAX_VOICES, 0), 1);
    EXPECT_EQ(filter_controller(CTRL_CHAN_MAX_VOICES, 120), 96);
    unsigned clamped = 0;
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++)
        clamped += unsigned(filter_controller(number, 127) != 127);
    EXPECT_EQ(clamped, 9U + 1 + 1 + 2 + 1 + 1 + 1 + 11 + 4 + 1);
}

} // namespace

} // namespace tarquil
