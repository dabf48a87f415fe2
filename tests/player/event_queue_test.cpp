// Tests of a queue of events without room; recorded sequences have their order.

#include "player/event_queue.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarquil {

namespace {

TEST(EventQueue, TakesAllOfAMessageOrNothing) {
    const auto queue = std::make_unique<EventQueue>();
    const std::vector<midi_event> most(EventQueue::CAPACITY - 1, {7, 0x90, 1, 0});
    const midi_event last = {3, 0x90, 2, 0};
    EXPECT_TRUE(queue->push(most));
    EXPECT_FALSE(queue->push({most.data(), 2}));
    EXPECT_EQ(queue->size(), EventQueue::CAPACITY - 1);
    EXPECT_TRUE(queue->push({&last, 1}));
    EXPECT_FALSE(queue->push({&last, 1}));
    EXPECT_EQ(queue->room(), 0U);
    const auto first = queue->take(0, 4);
    ASSERT_EQ(first.size(), 1U);
    EXPECT_EQ(first[0].data1, 2);
    EXPECT_EQ(queue->take(0, 8).size(), EventQueue::CAPACITY - 1);
}

} // namespace

} // namespace tarquil
