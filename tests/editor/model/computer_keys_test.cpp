// Tests of the computer's keys as a piano: what was struck is what ends.

#include "editor/model/computer_keys.h"

#include <gtest/gtest.h>

#include "tests/editor/recording_synth.h"

namespace tarquil {

namespace {

class ComputerKeysTest : public testing::Test {
  protected:
    // As codes, the characters themselves.
    void press(char character, unsigned channel = 0) {
        keys.press(uint32_t(character), uint32_t(character), channel);
    }
    void release(char character) { keys.release(uint32_t(character)); }

    RecordingSynth synth;
    PlayedNotes notes{synth};
    ComputerKeys keys{notes};
};

TEST_F(ComputerKeysTest, AHeldKeyStrikesOnceAndEndsAsWhatItStruck) {
    press('a');
    press('a');
    press('a', 5);
    press('x');
    press('x');
    release('x');
    press('d', 3);
    release('a');
    EXPECT_EQ(synth.take(), "1:60+100 4:76+100 1:60-")
        << "octave and channel have changed meanwhile";
    release('a');
    EXPECT_EQ(synth.take(), "");
    press('a', 3);
    release('d');
    release('a');
    EXPECT_EQ(synth.take(), "4:72+100 4:76- 4:72-");
}

TEST_F(ComputerKeysTest, EndsOfTheRangeAndOtherKeysAreLeftAlone) {
    for (int i = 0; i < 20; i++) {
        press('x');
        release('x');
    }
    EXPECT_FALSE(keys.press(1, 0, 0));
    EXPECT_FALSE(keys.press(1, 0xE4, 0));
    EXPECT_FALSE(keys.press(1, 'q', 0));
    EXPECT_TRUE(keys.press(1, 'a', 0));
    EXPECT_TRUE(keys.press(2, ';', 0));
    EXPECT_EQ(synth.take(), "1:108+100 1:124+100");
    EXPECT_EQ(keys.character_of(110), 's');
    EXPECT_EQ(keys.character_of(107), 0);
}

} // namespace

} // namespace tarquil
