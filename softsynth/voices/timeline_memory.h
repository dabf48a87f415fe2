// Where the timelines of controllers that change often within a block find room.
//
// Rendering must not allocate, and no timeline can be given room for everything that a block may
// bring.  All timelines of the process therefore share one store, large enough for a block with a
// full event queue; it is empty again when the block's timelines have been reset.  Not reentrant,
// as rendering is not.

#pragma once

#include <cstdint>

namespace tarquil {

struct ControllerEvent;

// Room for `count` events; from the heap when the store is full.  Null when there is no memory.
ControllerEvent* take_timeline(uint32_t count);

// Gives back what take_timeline returned.
void give_back_timeline(ControllerEvent* events);

// Touches the whole store, so that no block meets its first page faults.
void prepare_timeline_memory();

} // namespace tarquil
