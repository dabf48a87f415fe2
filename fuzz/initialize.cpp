// What every fuzz target does once before its first input.

#include <cstdio>
#include <cstdlib>

namespace tarquil {

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

// Messages about missing keys and clamped values would bury the fuzzer's own report.
int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    if (std::freopen("/dev/null", "w", stdout) == nullptr)
        std::abort();
    return 0;
}

} // namespace tarquil
