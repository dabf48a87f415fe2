// Tests of the phrases that sounds are heard by.

#include "instrument/phrase.h"

#include <gmock/gmock.h>

namespace tarquil {

namespace {

using testing::ElementsAre;

TEST(Phrase, HasTheWrittenKeysTimesAndStrokes) {
    const auto phrase = parse_phrase("at 120 bpm, eighths: A2+C#3! . . - | Bb-1, E5 .");
    ASSERT_TRUE(phrase.has_value());
    EXPECT_THAT(*phrase, ElementsAre(PhraseNote{0, 750, 45, 118}, PhraseNote{0, 750, 49, 118},
                                     PhraseNote{1000, 250, 10, 55}, PhraseNote{1250, 500, 76, 90}));
    const auto slow = parse_phrase("at 45 bpm, quarters: C4");
    ASSERT_TRUE(slow.has_value());
    EXPECT_THAT(*slow, ElementsAre(PhraseNote{0, 1333, 60, 90}));
}

TEST(Phrase, ARestEndsWhatWouldBeHeldOn) {
    const auto phrase = parse_phrase("at 60 bpm, quarters: . C4 - . .");
    ASSERT_TRUE(phrase.has_value());
    EXPECT_THAT(*phrase, ElementsAre(PhraseNote{1000, 1000, 60, 90}));
}

TEST(Phrase, WhatIsNotOneAsAWholeIsNone) {
    for (const char* text :
         {"", "at", "at 120 bpm, eighths:", "at 120 bpm, eighths: - . |", "at 0 bpm, eighths: C4",
          "at 99999999999 bpm, eighths: C4", "at 120 bpm, ninths: C4", "at 120 bpm, eighths C4",
          "at 120 bpm, eighths: H4", "at 120 bpm, eighths: C4+", "at 120 bpm, eighths: C4x",
          "at 120 bpm, eighths: C99", "at 120 bpm, eighths: A9", "at 120 bpm, eighths: Cb-1",
          "at 120 bpm, eighths: C", "at 120 bpm, eighths: !"})
        EXPECT_FALSE(parse_phrase(text).has_value()) << text;
    std::string endless = "at 120 bpm, eighths:";
    for (size_t i = 0; i <= MAX_PHRASE_NOTES; i++)
        endless += " C4";
    EXPECT_FALSE(parse_phrase(endless).has_value());
}

TEST(Phrase, IsFoundBehindWhatElseIsSaid) {
    EXPECT_TRUE(find_phrase("Old songs. Phrase: at 80 bpm, eighths: C4! E4").has_value());
    EXPECT_FALSE(find_phrase("A nice phrase for everybody").has_value());
    EXPECT_FALSE(find_phrase("Phrase: whatever you like").has_value());
}

} // namespace

} // namespace tarquil
