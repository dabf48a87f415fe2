// Core cycles without performance counters.

#pragma once

namespace tarquil {

// CPU time of this thread, in seconds.
double thread_seconds();

// The core's present clock in cycles per second, from a chain of dependent integer multiplications
// of three cycles each.  Takes about 0.2 ms.
double core_frequency();

} // namespace tarquil
