// Events on their way to the engine, in the order of their times.

#include "player/event_queue.h"

#include <algorithm>

namespace tarquil {

bool EventQueue::push(std::span<const midi_event> events) {
    if (events.size() > room())
        return false;
    for (const midi_event& event : events) {
        if (num_events > 0 && event.time < entries[num_events - 1].event.time)
            is_sorted = false;
        entries[num_events] = {event, num_events};
        num_events++;
    }
    return true;
}

// In place: a stable sort would allocate.
void EventQueue::sort() {
    if (is_sorted)
        return;
    std::sort(entries.begin(), entries.begin() + num_events, [](const Entry& a, const Entry& b) {
        return a.event.time != b.event.time ? a.event.time < b.event.time : a.order < b.order;
    });
    is_sorted = true;
}

std::span<const midi_event> EventQueue::take(uint32_t now, uint32_t end) {
    sort();
    uint32_t count = 0;
    for (; count < num_events && entries[count].event.time < end; count++) {
        taken[count] = entries[count].event;
        taken[count].time = std::max(taken[count].time, now);
    }
    if (count > 0) {
        std::move(entries.begin() + count, entries.begin() + num_events, entries.begin());
        num_events -= count;
        for (uint32_t i = 0; i < num_events; i++)
            entries[i].order = i;
    }
    return {taken.data(), count};
}

void EventQueue::clear() {
    num_events = 0;
    is_sorted = true;
}

void EventQueue::move_clock_back(uint32_t frames) {
    for (uint32_t i = 0; i < num_events; i++)
        entries[i].event.time -= std::min(entries[i].event.time, frames);
}

} // namespace tarquil
