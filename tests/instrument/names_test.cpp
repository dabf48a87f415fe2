// Tests of what is left of a typed name or title.

#include "instrument/names.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(Names, StorableTextIsWhatAFileGivesBack) {
    EXPECT_EQ(storable_text("\t\n wide pad \r\v"), "wide pad");
    EXPECT_EQ(storable_text("a#b\nc\x7F\x1F d"), "a_b_c__ d");
    EXPECT_EQ(storable_text("\xC3\xA4 ~!"), "\xC3\xA4 ~!");
    EXPECT_EQ(storable_text(" \t "), "");
}

TEST(Names, TitlesOfBlanksOnlyAreNone) {
    TarqSettings bank;
    bank.set_song_title(" \t");
    bank.set_song_author(" x ");
    remove_lone_blanks(bank);
    EXPECT_EQ(bank.get_song_title(), "");
    EXPECT_EQ(bank.get_song_author(), " x ");
}

TEST(Names, EveryProgramHasItsNumberAsItsFirstName) {
    TarqSettings bank;
    set_default_names(bank);
    EXPECT_EQ(bank.get_instrument(0).get_name(), "instrument_0");
    EXPECT_EQ(bank.get_instrument(127).get_name(), "instrument_127");
}

} // namespace

} // namespace tarquil
