// One line of the kernels' table.

#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tarquil {

struct KernelRow {
    enum Unit { CYCLES, MICROSECONDS };

    std::string name;
    Unit unit;
    double count; // of what one run does and the unit counts (samples, frames, notes, ...)
    std::function<void()> run;
    bool has_levels = true; // false: the kernels make no difference
};

std::vector<KernelRow> oscillator_rows();
std::vector<KernelRow> master_rows();
std::vector<KernelRow> filter_rows();
std::vector<KernelRow> note_rows();
std::vector<KernelRow> table_rows();

} // namespace tarquil
