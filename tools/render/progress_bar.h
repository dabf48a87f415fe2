// A bar on the terminal that shows how far a render is.

#pragma once

#include <cstdint>

namespace tarquil {

class ProgressBar {
  public:
    // Draws on standard error, when `wanted` and that is a terminal.
    ProgressBar(bool wanted, uint64_t total_steps);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // Draws when a percent has passed; steps beyond the total count as all.
    void advance_to(uint64_t step);

  private:
    uint64_t total;
    unsigned shown_percent = 101; // nothing is shown yet
    bool is_visible;
};

} // namespace tarquil
