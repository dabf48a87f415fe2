// The failure path of the assertion macro.

#include "common/assertion.h"

#include <cstdio>

namespace tarquil {

void assertion_failed(const char* file, int line, const char* expression) {
    std::fprintf(stderr, "Assert failure at %s:%d: %s\n", file, line, expression);
    std::fflush(stderr);
    __builtin_trap();
}

} // namespace tarquil
