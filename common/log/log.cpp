// Log functions.

#include "common/log/log.h"

#include <atomic>
#include <cstdio>

namespace tarquil {

namespace {

std::atomic<bool> enabled{false};

} // namespace

void logEnable() {
    enabled = true;
}

void logDisable() {
    enabled = false;
}

void logPrintf(const char* /*format*/, ...) {}

void logMessageBox(const char* text) {
    std::fprintf(stderr, "Tarquil: %s\n", text);
}

} // namespace tarquil
