// What the files that a command has loaded lacked.

#include "tools/load_summary.h"

#include <cstdio>

namespace tarquil {

void print_load_summary(const LoadReport& report) {
    const std::string text = report.summary();
    if (!text.empty())
        std::fprintf(stderr, "tarquil: %s\n", text.c_str());
}

} // namespace tarquil
