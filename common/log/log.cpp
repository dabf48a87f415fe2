// Log functions.

#include "common/log/log.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace tarquil {

namespace {

bool is_asked_for() {
    const char* value = std::getenv("TARQUIL_LOG");
    return value != nullptr && std::string_view(value) == "1";
}

std::atomic<bool> enabled{is_asked_for()};

} // namespace

void logEnable() {
    enabled = true;
}

void logDisable() {
    enabled = false;
}

void logPrintf(const char* format, ...) {
    if (!enabled.load(std::memory_order_relaxed))
        return;
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}

void logMessageBox(const char* text) {
    std::fprintf(stderr, "Tarquil: %s\n", text);
}

} // namespace tarquil
