// Core cycles without performance counters.

#include "bench/kernels/core_cycles.h"

#include <ctime>

#include <cstdint>

namespace tarquil {

double thread_seconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

double core_frequency() {
    constexpr int MULTIPLICATIONS = 300000;
    constexpr int CYCLES_EACH = 3;
    uint64_t factor = 3;
    uint64_t product = 1;
    asm volatile("" : "+r"(factor));
    const double start = thread_seconds();
    for (int i = 0; i < MULTIPLICATIONS; i++) {
        product *= factor;
        asm volatile("" : "+r"(product)); // so that none is left out
    }
    return CYCLES_EACH * MULTIPLICATIONS / (thread_seconds() - start);
}

} // namespace tarquil
