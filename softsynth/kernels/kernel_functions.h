// The kernels of one level, in its namespace; for the kernels' sources only.
//
// The build compiles scalar/ once and lanes/ once per instruction set, with KERNEL_NAMESPACE
// naming the level.  These sources must not instantiate inline functions of other headers or of
// the standard library: the linker keeps one copy for all, which may hold instructions that the
// machine lacks (a test looks at the objects).

#pragma once

#include "softsynth/kernels/kernels.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {

#define KERNEL(result, name, arguments) result name arguments;
#include "softsynth/kernels/kernels.def"
#undef KERNEL

extern const Kernels TABLE;

} // namespace KERNEL_NAMESPACE

} // namespace tarquil
