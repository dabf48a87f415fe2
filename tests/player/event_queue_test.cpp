// Tests of a queue of events without room, and of its clock; recorded sequences have their order.

#include "player/event_queue.h"

#include <gmock/gmock.h>

#include <memory>

namespace tarquil {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EventQueueTest : public testing::Test {
  protected:
    // Events are told apart by their first data byte.
    bool push(uint32_t time, unsigned name) {
        const midi_event event = {time, 0x90, uint8_t(name), 0};
        return queue->push({&event, 1});
    }
    std::vector<int> take(uint32_t now, uint32_t end) {
        std::vector<int> names;
        for (const midi_event& event : queue->take(now, end))
            names.push_back(event.data1);
        return names;
    }

    std::unique_ptr<EventQueue> queue = std::make_unique<EventQueue>();
};

TEST_F(EventQueueTest, TakesAllOfAMessageOrNothing) {
    const std::vector<midi_event> most(EventQueue::CAPACITY - 1, {7, 0x90, 1, 0});
    EXPECT_TRUE(queue->push(most));
    EXPECT_FALSE(queue->push({most.data(), 2}));
    EXPECT_EQ(queue->size(), EventQueue::CAPACITY - 1);
    EXPECT_TRUE(push(3, 2));
    EXPECT_FALSE(push(3, 3));
    EXPECT_EQ(queue->room(), 0U);
    EXPECT_EQ(take(0, 4), std::vector<int>{2});
    EXPECT_EQ(take(0, 8).size(), EventQueue::CAPACITY - 1);
}

TEST_F(EventQueueTest, TheClockMovesBackToNothingEarlierThanItsStart) {
    push(100, 1);
    push(30, 2);
    queue->move_clock_back(60);
    EXPECT_THAT(take(0, 1), ElementsAre(2));
    EXPECT_THAT(take(1, 40), IsEmpty());
    EXPECT_THAT(take(1, 41), ElementsAre(1));
}

} // namespace

} // namespace tarquil
