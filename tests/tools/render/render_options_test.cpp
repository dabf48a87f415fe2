// Tests of the reading of a render's options.

#include "tools/render/render_options.h"

#include <gtest/gtest.h>

#include "common/failure.h"

namespace tarquil {

namespace {

TEST(RenderOptions, ReadsChannels) {
    EXPECT_EQ(parse_channels("1"), ChannelSet(0x1));
    EXPECT_EQ(parse_channels("1,3-5,16"), ChannelSet(0x801D));
    EXPECT_EQ(parse_channels("1-16"), ChannelSet(0xFFFF));
    for (const char* bad :
         {"", "0", "17", "1,", ",1", "5-3", "1-", "-3", "1-2-3", "a", "1 2", "+1"})
        EXPECT_THROW(parse_channels(bad), BadInput) << bad;
}

TEST(RenderOptions, ReadsInstruments) {
    RenderOptions options;
    parse_instrument("10=a=b.tqi", options);
    EXPECT_EQ(options.instrument_paths[9], "a=b.tqi");
    for (const char* bad : {"", "10", "10=", "=a.tqi", "17=a.tqi", "0=a.tqi", "x=a.tqi"})
        EXPECT_THROW(parse_instrument(bad, options), BadInput) << bad;
}

TEST(RenderOptions, ReadsNumbers) {
    EXPECT_EQ(parse_tail("auto"), std::nullopt);
    EXPECT_EQ(parse_tail("0"), 0U);
    EXPECT_EQ(parse_tail("2.5"), 110250U);
    for (const char* bad : {"", "-1", "1801", "nan", "inf", "2,5", "1s", "Auto"})
        EXPECT_THROW(parse_tail(bad), BadInput) << bad;
    EXPECT_EQ(parse_level("-1.5"), -1.5);
    for (const char* bad : {"", "1", "-121", "nan", "-inf", "-1dB"})
        EXPECT_THROW(parse_level(bad), BadInput) << bad;
    EXPECT_EQ(parse_block("2048"), 2048U);
    for (const char* bad : {"", "0", "2", "6", "2052", "-4", "4.0"})
        EXPECT_THROW(parse_block(bad), BadInput) << bad;
    EXPECT_EQ(parse_seed("4294967295"), UINT32_MAX);
    for (const char* bad : {"", "-1", "4294967296", "1x"})
        EXPECT_THROW(parse_seed(bad), BadInput) << bad;
}

} // namespace

} // namespace tarquil
