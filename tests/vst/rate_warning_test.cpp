// Tests of what the plug-in says about a host's rate.

#include "vst/rate_warning.h"

#include <gmock/gmock.h>

#include <limits>

namespace tarquil {

namespace {

using testing::HasSubstr;

TEST(RateWarning, SaysHowFarOutOfTuneItIs) {
    EXPECT_EQ(rate_warning(44100), "");
    EXPECT_EQ(rate_warning(0), "");
    EXPECT_EQ(rate_warning(std::numeric_limits<double>::quiet_NaN()), "");
    // 1200 log2(48000 / 44100) = 146.7
    EXPECT_THAT(rate_warning(48000), HasSubstr("48000 Hz the VST 2 plug-in plays 147 cents sharp "
                                               "and 9 % too fast."));
    EXPECT_THAT(rate_warning(22050), HasSubstr("1200 cents flat and 50 % too slowly."));
    EXPECT_THAT(rate_warning(96000), HasSubstr("1347 cents sharp"));
}

} // namespace

} // namespace tarquil
