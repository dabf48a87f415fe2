// Lines of a state about channels, read out of any text.

#include "player/channel_programs.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(ChannelPrograms, OnlyWholeLinesCount) {
    EXPECT_EQ(find_edited_program("edited_program = 5\n"), 5U);
    EXPECT_EQ(find_edited_program("title = Set\nedited_program = 4\nedited_program = 5\n"), 5U);
    // A sound's comment may say anything.
    EXPECT_EQ(find_edited_program("p0_comment = edited_program = 5\n"), std::nullopt);
    EXPECT_EQ(find_edited_program("edited_program = 128\n"), std::nullopt);
    EXPECT_EQ(find_selected_channel("selected_channel = 16\n"), std::nullopt);
    const ChannelPrograms usual = usual_channel_programs(MidiDialect::NATIVE);
    EXPECT_EQ(find_channel_programs("comment = channel_programs = 9 9\n", MidiDialect::NATIVE),
              usual);
    ChannelPrograms some = usual;
    some[0] = 9; // the second is none, the others are not named
    EXPECT_EQ(find_channel_programs("channel_programs = 9 200\n", MidiDialect::NATIVE), some);
}

} // namespace

} // namespace tarquil
