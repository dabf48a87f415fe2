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

} // namespace

} // namespace tarquil
