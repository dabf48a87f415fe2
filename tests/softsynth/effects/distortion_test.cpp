// Shape rules of the distortion curve.

#include "softsynth/effects/distortion.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

struct Curve {
    Curve(float t, float g, float a) : threshold(t), asymmetry(a) {
        distortion_calc_param(t, g, a, &slope, &dc_offset, &knee_a, &knee_b);
    }
    [[nodiscard]] float operator()(float x) const {
        return distortion(x, threshold, asymmetry, slope, dc_offset, knee_a, knee_b);
    }

    float threshold;
    float asymmetry;
    float slope = 0.0F;
    float dc_offset = 0.0F;
    float knee_a = 0.0F;
    float knee_b = 0.0F;
};

TEST(Distortion, RisesMonotonicallyAndHasUnityGainWithoutDrive) {
    const Curve driven(0.4F, 10.0F, 0.3F);
    const Curve clean(0.4F, 1.0F, 0.0F);
    for (int i = -200; i < 200; i++) {
        EXPECT_LE(driven(float(i) * 0.01F), driven(float(i + 1) * 0.01F)) << i;
        EXPECT_NEAR(clean(float(i) * 0.01F), float(i) * 0.01F, 1e-6F) << i;
    }
}

TEST(Distortion, SilenceStaysSilentUnderAsymmetry) {
    for (const float a : {0.0F, 0.1F, 0.5F, 1.0F}) {
        EXPECT_EQ(Curve(0.25F, 4.0F, a)(0.0F), 0.0F);
        EXPECT_EQ(Curve(0.25F, 20.0F, a)(0.0F), 0.0F);
    }
    EXPECT_NE(Curve(0.25F, 4.0F, 0.1F)(0.1F), -Curve(0.25F, 4.0F, 0.1F)(-0.1F));
}

TEST(Distortion, HighestDriveClipsHard) {
    const Curve curve(0.5F, 20.0F, 0.0F);
    EXPECT_EQ(curve(0.6F), 0.5F);
    EXPECT_EQ(curve(1e30F), 0.5F);
    EXPECT_EQ(curve(-1e30F), -0.5F);
    EXPECT_GT(Curve(0.5F, 19.6F, 0.0F)(0.6F), 0.5F);
}

} // namespace

} // namespace tarquil
