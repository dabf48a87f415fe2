// Tests of what a load says about a file that it has taken.

#include "instrument/load_report.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

TEST(LoadReport, TheSummaryCountsByKind) {
    LoadReport report;
    EXPECT_EQ(report.summary(), "");
    report_warning(&report, "x is not known");
    EXPECT_EQ(report.summary(), "x is not known");
    report.place = "instrument3: ";
    report_missing_key(&report, "panning");
    EXPECT_EQ(report.warnings.back(), "instrument3: panning not found, using defaults");
    EXPECT_EQ(report.summary(), "1 key is missing and takes its default, 1 line is not understood");
    report_out_of_range(&report, 7, 2.0F);
    report_missing_key(&report, "x");
    report_warning(&report, "y");
    EXPECT_EQ(report.summary(), "2 keys are missing and take their defaults, 1 number is out of "
                                "range, 2 lines are not understood");
}

TEST(LoadReport, TheListIsBoundedAndTheCountIsNot) {
    LoadReport report;
    for (int i = 0; i < 3000; i++)
        report_missing_key(&report, "key");
    EXPECT_EQ(report.warnings.size(), LoadReport::MAX_WARNINGS);
    EXPECT_EQ(report.num_missing, 3000U);
}

} // namespace

} // namespace tarquil
