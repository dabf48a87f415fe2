// Tests of the thread that computes responses.

#include "editor/plots/response_worker.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarquil {

namespace {

const FilterSettings LOW_PASS{FilterType(1), 1, 5.0F, 1.0F, 0.25F, 0.0F};

Response computed(const FilterSettings& filter) {
    return filter_gains(filter, response_frequencies());
}

TEST(ResponseWorker, IsFlatUntilTheFilterAskedForIsReady) {
    ResponseWorker worker;
    const Response& shown = worker.get(3, LOW_PASS);
    EXPECT_EQ(shown, Response(response_frequencies().size(), 0.0));
    worker.wait();
    EXPECT_TRUE(worker.refresh());
    EXPECT_EQ(shown, computed(LOW_PASS));
    EXPECT_LT(shown.back(), -20);
    EXPECT_FALSE(worker.refresh()) << "taken already";
    worker.get(3, LOW_PASS);
    worker.wait();
    EXPECT_FALSE(worker.refresh()) << "the same filter is not computed again";
}

TEST(ResponseWorker, EachAskerGetsItsOwnAndTheLastThatItAskedFor) {
    ResponseWorker worker;
    FilterSettings filter = LOW_PASS;
    for (int repeat = 0; repeat < 20; repeat++) {
        for (unsigned index = 0; index < ResponseWorker::MAX_FILTERS; index++) {
            filter.cutoff_octaves = 1.0F + 0.25F * float(index) + 0.01F * float(repeat);
            worker.get(index, filter);
        }
    }
    worker.wait();
    worker.refresh();
    for (const unsigned index : {0U, 7U, ResponseWorker::MAX_FILTERS - 1}) {
        filter.cutoff_octaves = 1.0F + 0.25F * float(index) + 0.01F * 19;
        EXPECT_EQ(worker.get(index, filter), computed(filter)) << index;
    }
}

TEST(ResponseWorker, GoesAwayWithWorkLeft) {
    for (int repeat = 0; repeat < 20; repeat++) {
        ResponseWorker worker;
        for (unsigned index = 0; index < ResponseWorker::MAX_FILTERS; index++)
            worker.get(index, LOW_PASS);
    }
}

} // namespace

} // namespace tarquil
