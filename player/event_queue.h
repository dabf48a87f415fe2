// Events on their way to the engine, in the order of their times.

#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "softsynth/parameters/midi_event.h"

namespace tarquil {

// Fixed memory, nothing is allocated.  Events of one time keep the order in which they came.
class EventQueue {
  public:
    static constexpr uint32_t CAPACITY = 16384;

    [[nodiscard]] uint32_t size() const { return num_events; }
    [[nodiscard]] uint32_t room() const { return CAPACITY - num_events; }

    // False, and nothing is queued, when there is no room for all of them.
    bool push(std::span<const midi_event> events);

    // Removes the events before the absolute sample time `end` and returns them in order, those
    // before `now` with the time `now`.  Valid until the next call; never a null pointer.
    std::span<const midi_event> take(uint32_t now, uint32_t end);

    void clear();

    // Lets the clock start `frames` later: all times become smaller by that, 0 at least.
    void move_clock_back(uint32_t frames);

  private:
    struct Entry {
        midi_event event;
        uint32_t order = 0; // of arrival
    };

    void sort();

    std::array<Entry, CAPACITY> entries;
    uint32_t num_events = 0;
    bool is_sorted = true;
    std::array<midi_event, CAPACITY> taken;
};

} // namespace tarquil
