// The choice of a kernel table: by instruction set, by the environment, by a test.
//
// The environment variable TARQUIL_KERNELS forces a level by its name; one that is unknown or that
// the machine lacks is reported, and the best one is used.

#pragma once

#include <string_view>
#include <vector>

#include "softsynth/kernels/kernels.h"

namespace tarquil {

struct KernelLevel {
    const char* name; // "scalar", "baseline", "v3" or "v4"
    const Kernels* kernels;
};

// The levels that this build has and this machine supports, slowest first.
const std::vector<KernelLevel>& kernel_levels();

// The level of that name, or null.
const KernelLevel* find_kernel_level(std::string_view name);

// The level that the environment asks for, else the best.
const KernelLevel& choose_kernel_level();

// The level in use: first the one chosen at start.
const KernelLevel& kernel_level();

// Uses another level: for tests and benchmarks, while nothing renders.
void use_kernel_level(const KernelLevel& level);

} // namespace tarquil
