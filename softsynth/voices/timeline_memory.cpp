// Where the timelines of controllers that change often within a block find room.

#include "softsynth/voices/timeline_memory.h"

#include <cstring>
#include <functional>
#include <new>

#include "softsynth/voices/controller.h"

namespace tarquil {

namespace {

// A queue of 16384 events, spread so that every timeline that grows has just doubled: less than
// four places for each event, with those of the shorter timelines that were left behind.
constexpr uint32_t STORE_EVENTS = 5 * 16384;

ControllerEvent store[STORE_EVENTS];
uint32_t used = 0;
uint32_t given_out = 0; // timelines that lie in the store

bool is_in_store(const ControllerEvent* events) {
    return !std::less<>()(events, store) && std::less<>()(events, store + STORE_EVENTS);
}

} // namespace

ControllerEvent* take_timeline(uint32_t count) {
    if (count > STORE_EVENTS - used)
        return new (std::nothrow) ControllerEvent[count];
    ControllerEvent* events = store + used;
    used += count;
    given_out++;
    return events;
}

void give_back_timeline(ControllerEvent* events) {
    if (!is_in_store(events)) {
        delete[] events;
        return;
    }
    given_out--;
    if (given_out == 0)
        used = 0;
}

void prepare_timeline_memory() {
    if (given_out == 0)
        std::memset(static_cast<void*>(store), 0, sizeof(store));
}

} // namespace tarquil
