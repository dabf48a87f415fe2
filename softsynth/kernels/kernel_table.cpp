// The table of one level's kernels.

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

const Kernels KERNEL_NAMESPACE::TABLE = {
#define KERNEL(result, name, arguments) KERNEL_NAMESPACE::name,
#include "softsynth/kernels/kernels.def"
#undef KERNEL
};

} // namespace tarquil
