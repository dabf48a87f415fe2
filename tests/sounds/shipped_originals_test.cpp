// Every original, played: it says what it is for, sounds, follows the velocity, and ends.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "instrument/phrase.h"
#include "sounds/shipped_sounds.h"
#include "tests/sounds/set_player.h"

namespace tarquil {
namespace {

using testing::ElementsAre;
using testing::Pair;

std::string category_of(unsigned program) {
    const Instrument& sound = shipped_originals().get_instrument(program);
    return std::string(sound.get_text(InstrumentText::CATEGORY));
}

TEST(ShippedOriginals, SayWhatTheyAreFor) {
    std::map<std::string, unsigned> counts;
    std::map<std::string, unsigned> names;
    for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
        const Instrument& sound = shipped_originals().get_instrument(program);
        SCOPED_TRACE(sound.get_name());
        counts[category_of(program)]++;
        EXPECT_EQ(names[sound.get_name()]++, 0U);
        EXPECT_EQ(sound.get_text(InstrumentText::AUTHOR), "Tarquil");
        EXPECT_FALSE(sound.get_text(InstrumentText::TAGS).empty());
        EXPECT_TRUE(find_phrase(sound.get_text(InstrumentText::COMMENT)).has_value());
    }
    EXPECT_THAT(counts, ElementsAre(Pair("basses", 16), Pair("bells", 10), Pair("effects", 12),
                                    Pair("keys", 12), Pair("leads", 16), Pair("pads", 18),
                                    Pair("plucks", 12), Pair("rhythmic", 12), Pair("textures", 12),
                                    Pair("voices", 8)));
}

class ShippedCategory : public testing::TestWithParam<const char*> {};

TEST_P(ShippedCategory, SoundsAndEnds) {
    constexpr double SLOWEST_SWELL = 1.2; // seconds until it is well heard
    SetPlayer player(shipped_originals());
    for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
        if (category_of(program) != GetParam())
            continue;
        SCOPED_TRACE(shipped_originals().get_instrument(program).get_name());
        player.choose_program(program);
        float peaks[2];
        for (const bool hard : {false, true}) {
            player.note_on(0, 57, hard ? 110 : 50);
            const std::vector<float> held = player.render(SLOWEST_SWELL);
            player.note_off(0, 57);
            EXPECT_LT(player.seconds_until_silent(), 10.0);
            peaks[hard ? 1 : 0] = peak_of(held);
        }
        EXPECT_GT(peaks[1], 0.01F);
        EXPECT_LT(peaks[1], 1.0F);
        EXPECT_GT(peaks[1], 2.0F * peaks[0]); // 14 dB, of which drive takes some
    }
}

INSTANTIATE_TEST_SUITE_P(Categories, ShippedCategory,
                         testing::Values("basses", "leads", "pads", "keys", "plucks", "bells",
                                         "textures", "rhythmic", "voices", "effects"),
                         [](const auto& category) { return std::string(category.param); });

} // namespace
} // namespace tarquil
