// The benchmark's entry: everything renders with flush-to-zero, as the engine does.

#include <benchmark/benchmark.h>

#include "softsynth/signal/flush_to_zero.h"

namespace tarquil {} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    const FlushToZero flush_to_zero;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
