// Tests of what a writer leaves to readers that do not wait: samples and records.

#include "common/sample_ring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "common/shared_record.h"

namespace tarquil {

namespace {

using Ring = SampleRing<64>;

// Frame n is n on the left and -n on the right.
void write(Ring& ring, uint32_t from, uint32_t count) {
    std::vector<float> frames;
    for (uint32_t i = from; i < from + count; i++)
        frames.insert(frames.end(), {float(i), -float(i)});
    ring.write(frames);
}

TEST(SampleRing, GivesTheLastFramesInTheirOrder) {
    Ring ring;
    std::vector<float> left(40);
    std::vector<float> right(40);
    for (uint32_t from = 0; from < 1000; from += 25) {
        write(ring, from, 25);
        ASSERT_TRUE(ring.read(left, right));
        for (uint32_t i = 0; i < 40; i++) {
            const float expected = std::max(0.0F, float(from) + 25 - 40 + float(i));
            ASSERT_EQ(left[i], expected) << from;
            ASSERT_EQ(right[i], -expected) << from;
        }
    }
}

TEST(SampleRing, AReaderIsNeverGivenFramesThatWereOverwrittenMeanwhile) {
    Ring ring;
    std::thread writer([&ring] {
        for (uint32_t from = 0; from < 400000; from += 16)
            write(ring, from, 16);
    });
    std::vector<float> left(48);
    std::vector<float> right(48);
    while (ring.count() < 399000) {
        if (!ring.read(left, right))
            continue;
        for (uint32_t i = 1; i < 48 && left[0] > 0; i++)
            ASSERT_EQ(left[i], left[0] + float(i));
        ASSERT_EQ(right[47], -left[47]);
    }
    writer.join();
}

TEST(SharedRecord, IsReadWholeWhileItIsWritten) {
    struct Record {
        uint32_t words[8];
    };
    SharedRecord<Record> shared;
    std::thread writer([&shared] {
        for (uint32_t i = 1; i <= 200000; i++)
            shared.write({{i, i, i, i, i, i, i, i}});
    });
    Record record{};
    while (record.words[0] < 200000) {
        if (!shared.read(record))
            continue;
        ASSERT_TRUE(std::all_of(std::begin(record.words), std::end(record.words),
                                [&](uint32_t word) { return word == record.words[0]; }));
    }
    writer.join();
}

} // namespace

} // namespace tarquil
