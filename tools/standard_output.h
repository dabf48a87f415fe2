// Standard output kept for results.
//
// A plug-in of another maker prints where it likes.  A command whose result goes to standard output
// moves such messages out of the way before anything can be printed.

#pragma once

namespace tarquil {

// Duplicates standard output and points descriptor 1 to standard error, once for the process;
// returns the duplicate, which is closed on exec.  -1 when there is no standard output.
int reserve_standard_output();

} // namespace tarquil
