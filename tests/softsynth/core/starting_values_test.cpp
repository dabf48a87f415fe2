// Renders what each type of effect and filter starts at: it is heard, and about as loud as before.

#include "softsynth/parameters/starting_values.h"

#include <gtest/gtest.h>

#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_type.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

using Changes = std::vector<StartingValue>;

// A middle C of the built-in sound, left and right, for three quarters of a second.
std::vector<float> render(const Changes& changes) {
    EngineHost host;
    host.set(0, CTRL_PANNING, 64);
    for (const StartingValue& change : changes)
        host.set(0, change.number, change.byte);
    host.render(1024);
    host.note_on(0, 60, 100);
    return host.render(33024);
}

double level_db(const std::vector<float>& sound) {
    double sum = 0.0;
    for (const float sample : sound)
        sum += double(sample) * sample;
    return 10.0 * std::log10(sum / double(sound.size()) + 1e-20);
}

std::vector<unsigned> type_controllers() {
    std::vector<unsigned> types = {mono_effect_rows(0).type, mono_effect_rows(1).type,
                                   STEREO_EFFECT_ROWS.type, CTRL_FILTER1_TYPE};
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++)
        types.push_back(channel_filter_rows(i).type);
    for (unsigned i = 0; i < NUM_GLOBAL_FILTERS; i++)
        types.push_back(global_filter_rows(i).type);
    return types;
}

TEST(StartingValues, EveryTypeIsHeardAndAboutAsLoudAsTheSoundBefore) {
    constexpr double FEW_DB = 4.5;
    const std::vector<float> plain = render({});
    for (const unsigned number : type_controllers()) {
        const ControllerChoices& choices = find_controller(number)->choices;
        for (int type = choices.first + 1; type <= choices.last; type++) {
            Changes changes = starting_values(number, type, default_controller_bytes());
            changes.push_back({number, uint8_t(type)});
            const std::vector<float> sound = render(changes);
            const double change_db = level_db(sound) - level_db(plain);
            const std::string what =
                std::string(find_controller(number)->key) + " " + choices.labels[size_t(type)];
            EXPECT_LT(std::fabs(change_db), FEW_DB) << what;
            // The voice filter's peak and shelves have no gain of their own.
            const bool is_flat = number == CTRL_FILTER1_TYPE && has_filter_gain(FilterType(type)) &&
                                 type < NUM_BASE_FILTER_TYPES;
            if (!is_flat) {
                EXPECT_NE(sound, plain) << what;
            }
        }
    }
}

TEST(StartingValues, WhatSomebodyHasSetStays) {
    const EffectRows effect = mono_effect_rows(1);
    ControllerBytes bytes = default_controller_bytes();
    const auto apply = [&](const Changes& changes) {
        for (const StartingValue& change : changes)
            bytes[change.number] = change.byte;
        return !changes.empty();
    };
    const auto choose = [&](int type) {
        const Changes changes = starting_values(effect.type, type, bytes);
        bytes[effect.type] = uint8_t(type);
        return apply(changes);
    };
    EXPECT_TRUE(choose(1));
    EXPECT_TRUE(choose(2)) << "the starts of another type are nobody's";
    EXPECT_TRUE(choose(0));
    EXPECT_EQ(bytes, default_controller_bytes()) << "and nothing is left of them";
    EXPECT_TRUE(choose(4));
    bytes[effect.parameter(0)]++;
    const ControllerBytes set = bytes;
    EXPECT_FALSE(choose(1));
    EXPECT_FALSE(choose(0));
    bytes[effect.type] = set[effect.type];
    EXPECT_EQ(bytes, set);
    EXPECT_TRUE(starting_values(CTRL_OSC1_TYPE, 4, bytes).empty()) << "no type of an effect";
}

} // namespace

} // namespace tarquil
