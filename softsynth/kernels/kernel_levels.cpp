// The choice of a kernel table: by instruction set, by the environment, by a test.

#include "softsynth/kernels/kernel_levels.h"

#include <cstdlib>
#include <string>

#include "common/log/log.h"

namespace tarquil {

namespace kernels_scalar {
extern const Kernels TABLE;
}
namespace kernels_baseline {
extern const Kernels TABLE;
}
#if defined(TARQUIL_X86_KERNELS)
namespace kernels_v3 {
extern const Kernels TABLE;
}
namespace kernels_v4 {
extern const Kernels TABLE;
}
#endif

namespace {

// Below this many copies a greater number of registers does not pay.
constexpr uint32_t MANY_COPIES = 24;

// Whether the processor splits an addition from memory in two when it has AVX's three operands.
bool splits_additions() {
#if defined(TARQUIL_X86_KERNELS)
    return __builtin_cpu_is("intel") != 0;
#else
    return false;
#endif
}

constexpr KernelLevel SCALAR = {"scalar", &kernels_scalar::TABLE};

std::vector<KernelLevel> find_levels() {
    std::vector<KernelLevel> levels = {SCALAR, {"baseline", &kernels_baseline::TABLE}};
#if defined(TARQUIL_X86_KERNELS)
    // What the levels of the x86-64 psABI hold beyond these features came with the same processors.
    __builtin_cpu_init();
    const bool v3 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
                    __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
    const bool v4 = v3 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                    __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
                    __builtin_cpu_supports("avx512vl");
    if (v3)
        levels.push_back({"v3", &kernels_v3::TABLE});
    if (v4)
        levels.push_back({"v4", &kernels_v4::TABLE});
#endif
    return levels;
}

// Chosen before main, so that no audio thread waits for it; what runs earlier gets the definition.
constinit const KernelLevel* current = &SCALAR;
const bool chosen = (current = &choose_kernel_level()) != nullptr;

} // namespace

const std::vector<KernelLevel>& kernel_levels() {
    static const std::vector<KernelLevel> levels = find_levels();
    return levels;
}

const KernelLevel* find_kernel_level(std::string_view name) {
    for (const KernelLevel& level : kernel_levels()) {
        if (name == level.name)
            return &level;
    }
    return nullptr;
}

const KernelLevel& choose_kernel_level() {
    const KernelLevel& best = kernel_levels().back();
    const char* wanted = std::getenv("TARQUIL_KERNELS");
    if (wanted == nullptr)
        return best;
    if (const KernelLevel* level = find_kernel_level(wanted))
        return *level;
    std::string names;
    for (const KernelLevel& level : kernel_levels())
        names += std::string(names.empty() ? "" : ", ") + level.name;
    logMessageBox(("TARQUIL_KERNELS=" + std::string(wanted) + " is not one of " + names +
                   " here; using " + best.name)
                      .c_str());
    return best;
}

const KernelLevel& kernel_level() {
    return *current;
}

void use_kernel_level(const KernelLevel& level) {
    current = &level;
}

const Kernels& kernels() {
    return *current->kernels;
}

decltype(Kernels::oscillator_copies) oscillator_kernel(uint32_t count) {
    return count < MANY_COPIES || splits_additions() ? kernels().oscillator_copies
                                                     : kernels().many_oscillator_copies;
}

} // namespace tarquil
