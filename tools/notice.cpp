// What a command says beside its result.

#include "tools/notice.h"

#include <cstdio>

namespace tarquil {

void print_notice(const std::string& text) {
    std::fprintf(stderr, "tarquil: %s\n", text.c_str());
}

void print_load_summary(const LoadReport& report) {
    const std::string text = report.summary();
    if (!text.empty())
        print_notice(text);
}

} // namespace tarquil
