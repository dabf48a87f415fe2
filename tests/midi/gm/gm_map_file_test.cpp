// Map files: what loads, and what is said of what does not.

#include "midi/gm/gm_map_file.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarquil {
namespace {

TEST(GmMapFile, ReadsEveryKindOfLine) {
    GmMap map;
    ASSERT_EQ(load_gm_map_from_string(map, "\xEF\xBB\xBF# a set\r\n"
                                           "title = Standard set  \r\n"
                                           "melodic_bank = gm.tqb\n"
                                           "drum_bank = gm-drums.tqb\n"
                                           "p056_level = at 72 above -1.5 vel -2\n"
                                           "p056_vibrato = 5.2 8 0.35 0.5\n"
                                           "p000_env1_decay = key -19.1 vel -3.4\n"
                                           "p000_velocity = linear\n"
                                           "p000_env1_attack = vel -2 # softer is slower\n"
                                           "d040_velocity = square\n"
                                           "family = kick hats\n"
                                           "k00_036 = kick 1 60 100 64 400\n"
                                           "k00_042 = hats 7 96 90 84 120 44,46\n"
                                           "k16_036 = kick 40 60 100 64 held\n"),
              "");
    EXPECT_EQ(map.title, "Standard set");
    EXPECT_EQ(map.drum_bank, "gm-drums.tqb");
    EXPECT_NEAR(map.programs.level[56].gain(60, 127), 1.0, 1e-6);
    EXPECT_NEAR(20 * std::log10(map.programs.level[56].gain(96, 103)), -3.0 + 4.0, 1e-6);
    EXPECT_FLOAT_EQ(map.programs.vibrato[56].delay_seconds, 0.35F);
    EXPECT_EQ(map.programs.velocity[0], VelocityLaw::LINEAR);
    EXPECT_EQ(map.programs.velocity[1], VelocityLaw::FROM_SOUND);
    ASSERT_EQ(map.programs.laws_of(0).size(), 2U);
    EXPECT_EQ(map.programs.laws_of(0)[0].controller, CTRL_ENV1_DECAY);
    EXPECT_FLOAT_EQ(map.programs.laws_of(0)[0].per_octave, -19.1F);
    EXPECT_TRUE(map.programs.laws_of(1).empty());
    EXPECT_TRUE(map.programs.laws_of(127).empty());
    const DrumKey* hat = map.find_drum(16, 42);
    ASSERT_NE(hat, nullptr);
    EXPECT_EQ(hat->family, 1);
    EXPECT_EQ(hat->num_chokes, 2);
    EXPECT_EQ(hat->chokes[1], 46);
    EXPECT_EQ(map.find_drum(16, 36)->milliseconds, 0);
    EXPECT_EQ(map.find_drum(5, 36)->milliseconds, 400);
    EXPECT_EQ(map.find_drum(0, 37), nullptr);
}

TEST(GmMapFile, SaysWhatIsWrongAndKeepsTheOldMap) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "there is no key of a map in it"},
        {"title", "line 1: no \"=\" with a value after it"},
        {"title = a\n\ncolour = red\n", "line 3: colour: is not a key of a map"},
        {"title = a\ntitle = b\n", "line 2: title: is there twice"},
        {"p128_velocity = square\n",
         "line 1: p128_velocity: the program '128' is not a number from 0 to 127"},
        {"p000_velocity = cubic\n", "line 1: p000_velocity: 'cubic' is neither square nor linear"},
        {"p000_loudness = key 1\n",
         "line 1: p000_loudness: 'loudness' is not a controller of a sound"},
        {"p000_filter1_cutoff = key 1\n", "line 1: p000_filter1_cutoff: all notes of a channel "
                                          "share filter1_cutoff: a law of a note "
                                          "can not change it"},
        {"p000_env1_decay = key\n", "line 1: p000_env1_decay: the slope is missing"},
        {"p000_env1_decay = key 1 2\n", "line 1: p000_env1_decay: the slope is missing"},
        {"p000_env1_decay = key nan\n",
         "line 1: p000_env1_decay: the slope 'nan' is not a number from -127 to 127"},
        {"p000_level = below 2\n",
         "line 1: p000_level: the slope '2' is not a number from -24 to 0"},
        {"p000_level = key 2\n", "line 1: p000_level: 'key' is none of at, below, above and vel"},
        {"p000_vibrato = 5 8 0.3\n", "line 1: p000_vibrato: the rise is missing"},
        {"d000_vibrato = 5 8 0.3 1\n",
         "line 1: d000_vibrato: 'vibrato' is not a controller of a sound"},
        {"family = a b a\n", "line 1: family: the family 'a' is there twice"},
        {"family = a\nk00_036 = b 1 60 100 64 400\n",
         "line 2: k00_036: unknown family 'b'; name it before, in family = ..."},
        {"family = a\nk00_036 = a 1.5 60 100 64 400\n",
         "line 2: k00_036: the instrument '1.5' is not a whole number"},
        {"family = a\nk00_036 = a 1 60 100 64 0\n",
         "line 2: k00_036: the length '0' is not a number from 1 to 30000"},
        {"family = a\nk00_036 = a 1 60 100 64 9 1,,2\n",
         "line 2: k00_036: the ended key '' is not a number from 0 to 127"},
        {"family = a\nk00_036 = a 1 60 100 64 9 1,2,3,4,5,6,7,8,9\n",
         "line 2: k00_036: it ends more than 8 keys"},
        {"family = a\nk00_036 = a 1 60 100 64 9 1 2\n", "line 2: k00_036: '2' is too much"},
        {"family = a b c d e f g h i j k l m n o p q\n", "line 1: family: more than 16 families"},
    };
    for (const auto& [text, error] : cases) {
        GmMap map;
        map.title = "as it was";
        EXPECT_EQ(load_gm_map_from_string(map, text), error);
        EXPECT_EQ(map.title, "as it was");
    }
    GmMap map;
    EXPECT_EQ(load_gm_map(map, "/nowhere/x.tqm"), "/nowhere/x.tqm: cannot be opened");
}

} // namespace
} // namespace tarquil
