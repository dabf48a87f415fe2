// The plug-in object before its block size, and its warnings.

#include "vst/tarq_vst.h"

#include <cmath>

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(TarqVST, WaitsForTheBlockSize) {
    TarqVST vst(nullptr);
    float left[8];
    float right[8];
    float* outputs[] = {left, right};
    std::fill_n(left, 8, 3.0F);
    std::fill_n(right, 8, 3.0F);
    vst.resume();
    vst.process(nullptr, outputs, 8);
    EXPECT_EQ(left[7], 3.0F);
    vst.processReplacing(nullptr, outputs, 8);
    EXPECT_EQ(left[7], 0.0F);
}

TEST(TarqVST, WarnsOnceOfAnotherSampleRate) {
    TarqVST vst(nullptr);
    testing::internal::CaptureStderr();
    vst.setSampleRate(44100.0F);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    vst.setSampleRate(48000.0F);
    vst.setSampleRate(96000.0F);
    vst.setSampleRate(NAN);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Tarquil: Sample rate was set to 48000, but sample rates other than 44100 is not "
              "supported.\nYou are on your own.\n");
}

} // namespace

} // namespace tarquil
