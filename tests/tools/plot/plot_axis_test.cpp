// Tests of plot axes: where values lie, which ticks there are and what they say.

#include "tools/plot/plot_axis.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarquil {

namespace {

std::string labels(const PlotAxis& axis) {
    std::string all;
    for (const AxisTick& tick : axis.ticks()) {
        EXPECT_GE(axis.position(tick.value), -1e-9);
        EXPECT_LE(axis.position(tick.value), 1 + 1e-9);
        if (!tick.label.empty())
            all += tick.label + " ";
    }
    return all;
}

TEST(PlotAxis, LinearTicksAreRoundAndFew) {
    EXPECT_EQ(labels(PlotAxis::linear("", 0, 1.05)),
              "0.0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1.0 ");
    EXPECT_EQ(labels(PlotAxis::linear("", -1.1, 1.1)),
              "-1.0 -0.8 -0.6 -0.4 -0.2 0.0 0.2 0.4 0.6 0.8 1.0 ");
    EXPECT_EQ(labels(PlotAxis::linear("", 0, 7.6)), "0 1 2 3 4 5 6 7 ");
    EXPECT_EQ(labels(PlotAxis::linear("", 0, 0.0012)),
              "0.0000 0.0002 0.0004 0.0006 0.0008 0.0010 0.0012 ");
    EXPECT_EQ(labels(PlotAxis::linear("", -24, 12, 12)), "-24 -12 0 12 ");
    for (int step = 0; step < 150; step++) {
        const double range = 1e-4 * std::pow(1.13, step);
        const size_t count = PlotAxis::linear("", 0, range).ticks().size();
        EXPECT_GE(count, 5U) << range;
        EXPECT_LE(count, 12U) << range;
    }
}

TEST(PlotAxis, LogarithmicTicksAreLabelledAt1And2And5) {
    const PlotAxis axis = PlotAxis::logarithmic("", 20, 20000);
    EXPECT_EQ(labels(axis), "20 50 100 200 500 1k 2k 5k 10k 20k ");
    EXPECT_EQ(axis.ticks().size(), 28U);
    EXPECT_NEAR(axis.position(200), 1.0 / 3, 1e-12);
    EXPECT_LT(axis.position(10), 0.0);
}

} // namespace

} // namespace tarquil
