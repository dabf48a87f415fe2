// A bar on the terminal that shows how far a render is.

#include "tools/render/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace tarquil {

namespace {

constexpr unsigned BAR_WIDTH = 40;

} // namespace

ProgressBar::ProgressBar(bool wanted, uint64_t total_steps)
    : total(std::max<uint64_t>(total_steps, 1)), is_visible(wanted && isatty(STDERR_FILENO) == 1) {}

// Leaves an empty line for what comes next.
ProgressBar::~ProgressBar() {
    if (is_visible)
        std::fputs("\r\033[K", stderr);
}

void ProgressBar::advance_to(uint64_t step) {
    const auto percent = unsigned(std::min(step, total) * 100 / total);
    if (!is_visible || percent == shown_percent)
        return;
    shown_percent = percent;
    const unsigned filled = percent * BAR_WIDTH / 100;
    const std::string bar = std::string(filled, '#') + std::string(BAR_WIDTH - filled, '.');
    std::fprintf(stderr, "\r[%s] %3u%%", bar.c_str(), percent);
    std::fflush(stderr);
}

} // namespace tarquil
