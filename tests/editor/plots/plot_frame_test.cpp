#include "editor/plots/plot_frame.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace tarquil {
namespace {

// What is drawn becomes whole numbers of pixels, which infinity is not.
TEST(PlotFrame, PlacesWithoutEndLieBeyondThePlotAndWithinReach) {
    constexpr double INFINITE = std::numeric_limits<double>::infinity();
    constexpr double FARTHEST = 1e6;
    const PlotFrame frame = frequency_frame({10, 20, 300, 100}, -40, 20);
    const Point notch = frame.point(1000, -INFINITE);
    EXPECT_GT(notch.y, 2 * frame.get_area().bottom());
    EXPECT_LT(notch.y, FARTHEST);
    const Point peak = frame.point(0, INFINITE); // 0 Hz is infinitely many octaves down
    EXPECT_LT(peak.y, -frame.get_area().h);
    EXPECT_GT(peak.y, -FARTHEST);
    EXPECT_LT(peak.x, -frame.get_area().w);
    EXPECT_GT(peak.x, -FARTHEST);
    EXPECT_LT(std::abs(frame.y(std::numeric_limits<double>::quiet_NaN())), FARTHEST);
}

} // namespace
} // namespace tarquil
