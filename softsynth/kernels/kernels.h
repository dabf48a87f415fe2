// The hot loops as a table of functions, chosen once at start for the machine's instruction set.
//
// Every table gives the same bits.  The scalar one is the definition of the sound (scalar/), the
// others are written once with Lanes (lanes/) and compiled once per instruction set.

#pragma once

#include <cstdint>

#include "softsynth/kernels/best_match.h"
#include "softsynth/kernels/biquad_lanes.h"
#include "softsynth/kernels/biquad_series.h"
#include "softsynth/kernels/crossover.h"
#include "softsynth/kernels/harmonic_tables.h"
#include "softsynth/kernels/ladder_lanes.h"
#include "softsynth/kernels/level_detectors.h"
#include "softsynth/kernels/oscillator_copies.h"
#include "softsynth/kernels/polyphase.h"
#include "softsynth/kernels/reverb_tank.h"

namespace tarquil {

struct Kernels {
// NOLINTNEXTLINE(bugprone-macro-parentheses): a declaration, not an expression
#define KERNEL(result, name, arguments) result(*name) arguments;
#include "softsynth/kernels/kernels.def"
#undef KERNEL
};

// The table in use.
const Kernels& kernels();

// Of the two kernels that do it, the faster one on this machine for the sum of `count` copies.
decltype(Kernels::oscillator_copies) oscillator_kernel(uint32_t count);

} // namespace tarquil
