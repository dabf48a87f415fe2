// Every original, played: it says what it is for, sounds, follows the velocity, and ends.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "instrument/phrase.h"
#include "sounds/shipped_sounds.h"
#include "tests/sounds/set_player.h"

namespace tarquil {
namespace {

TEST(ShippedOriginals, SayWhatTheyAreFor) {
    const std::set<std::string_view> categories = {"basses",   "bells", "effects", "keys",
                                                   "leads",    "pads",  "plucks",  "rhythmic",
                                                   "textures", "voices"};
    std::set<std::string> names;
    for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
        const Instrument& sound = shipped_originals().get_instrument(program);
        SCOPED_TRACE(sound.get_name());
        EXPECT_TRUE(names.insert(sound.get_name()).second);
        EXPECT_TRUE(categories.contains(sound.get_text(InstrumentText::CATEGORY)));
        EXPECT_FALSE(sound.get_text(InstrumentText::TAGS).empty());
        EXPECT_TRUE(find_phrase(sound.get_text(InstrumentText::COMMENT)).has_value());
    }
}

constexpr unsigned AT_ONCE = 8;

class ShippedEight : public testing::TestWithParam<unsigned> {};

TEST_P(ShippedEight, SoundAndEnd) {
    constexpr double SLOWEST_SWELL = 1.2; // seconds until it is well heard
    SetPlayer player(shipped_originals());
    for (unsigned program = GetParam() * AT_ONCE; program < (GetParam() + 1) * AT_ONCE; program++) {
        SCOPED_TRACE(shipped_originals().get_instrument(program).get_name());
        player.choose_program(program);
        const float soft = peak(player.play(0, 57, 50, SLOWEST_SWELL, 10.0));
        const float hard = peak(player.play(0, 57, 110, SLOWEST_SWELL, 10.0));
        EXPECT_GT(hard, 0.01F);
        EXPECT_LT(hard, 1.0F);
        EXPECT_GT(hard, 2.0F * soft); // 14 dB, of which drive takes some
    }
}

INSTANTIATE_TEST_SUITE_P(Originals, ShippedEight, testing::Range(0U, MAX_INSTRUMENTS / AT_ONCE));

} // namespace
} // namespace tarquil
