// Where the timelines of controllers that change often within a block find room.

#include "softsynth/voices/timeline_memory.h"

#include <functional>
#include <new>

namespace tarquil {

bool TimelineMemory::is_in_store(const ControllerEvent* events) const {
    return !std::less<>()(events, store) && std::less<>()(events, store + STORE_EVENTS);
}

ControllerEvent* TimelineMemory::take(uint32_t count) {
    if (count > STORE_EVENTS - used)
        return new (std::nothrow) ControllerEvent[count];
    ControllerEvent* events = store + used;
    used += count;
    given_out++;
    return events;
}

void TimelineMemory::give_back(ControllerEvent* events) {
    if (!is_in_store(events)) {
        delete[] events;
        return;
    }
    given_out--;
    if (given_out == 0)
        used = 0;
}

} // namespace tarquil
