// Tests of what sounds are tried with.

#include "editor/model/audition_phrase.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

uint8_t first_key(const char* category, const char* comment = "") {
    Instrument sound;
    sound.set_text(InstrumentText::CATEGORY, category);
    sound.set_text(InstrumentText::COMMENT, comment);
    return audition_phrase(sound).front().key;
}

TEST(AuditionPhrase, FitsTheCategoryUnlessTheSoundNamesOne) {
    EXPECT_EQ(first_key("basses"), first_key("Bass"));
    EXPECT_LT(first_key("basses"), 36);
    EXPECT_GT(first_key("leads"), 60);
    EXPECT_EQ(first_key("leads", "Solo. Phrase: at 90 bpm, quarters: D2"), 38);
    EXPECT_EQ(first_key("leads", "Solo. Phrase: of your own"), first_key("leads"));
}

// Each of the table's texts is a phrase, or this ends in an assertion.
TEST(AuditionPhrase, EverySoundHasOne) {
    for (const char* category :
         {"",         "drums",   "percussive",    "bass",     "lead",   "pads",      "textures",
          "voices",   "strings", "ensemble",      "brass",    "reed",   "pipe",      "organ",
          "piano",    "keys",    "guitar",        "plucks",   "ethnic", "chromatic", "bells",
          "rhythmic", "effects", "sound effects", "of my own"})
        EXPECT_FALSE(first_key(category) == 0) << category;
}

} // namespace

} // namespace tarquil
