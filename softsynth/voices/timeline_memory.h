// Where the timelines of controllers that change often within a block find room.
//
// Rendering must not allocate, and no timeline can be given room for everything that a block may
// bring.  All timelines of an engine therefore share one store, large enough for a block with a
// full event queue; it is empty again when the block's timelines have been reset.

#pragma once

#include <cstdint>

namespace tarquil {

// A step of a timeline.
struct ControllerEvent {
    uint32_t time = 0; // absolute sample time
    int32_t value = 0; // 0..127
};

class TimelineMemory {
  public:
    TimelineMemory() = default;
    TimelineMemory(const TimelineMemory&) = delete;
    TimelineMemory& operator=(const TimelineMemory&) = delete;

    // Room for `count` events; from the heap when the store is full.  Null when there is no memory.
    ControllerEvent* take(uint32_t count);

    // Gives back what `take` returned.
    void give_back(ControllerEvent* events);

  private:
    // A queue of 16384 events, spread so that every timeline that grows has just doubled: less than
    // four places for each event, with those of the shorter timelines that were left behind.
    static constexpr uint32_t STORE_EVENTS = 5 * 16384;

    [[nodiscard]] bool is_in_store(const ControllerEvent* events) const;

    ControllerEvent store[STORE_EVENTS];
    uint32_t used = 0;
    uint32_t given_out = 0; // timelines that lie in the store
};

} // namespace tarquil
