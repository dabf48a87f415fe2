// Standard output kept for results.
//
// Loading instruments and clamping values print messages on standard output.  A command whose
// result goes there moves those messages out of the way before anything can be printed.

#pragma once

namespace tarquil {

// Duplicates standard output and points descriptor 1 to standard error, once for the process;
// returns the duplicate, which is closed on exec.  -1 when there is no standard output.
int reserve_standard_output();

} // namespace tarquil
