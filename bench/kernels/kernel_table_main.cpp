// Prints what the hot loops cost at every kernel level, in core cycles.
//
// Usage: tarquil_kernel_bench [--markdown] [PART OF A NAME]   Each figure is the median of five
// measurements, taken in turns over the levels, in CPU time, with the core's clock measured before
// and after each.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "bench/kernels/core_cycles.h"
#include "bench/kernels/kernel_row.h"
#include "softsynth/kernels/kernel_levels.h"
#include "softsynth/signal/flush_to_zero.h"

namespace tarquil {

namespace {

constexpr int REPETITIONS = 5;
constexpr double SECONDS_EACH = 0.005;

using Samples = std::array<double, REPETITIONS>;

double median(Samples samples) {
    std::nth_element(samples.begin(), samples.begin() + REPETITIONS / 2, samples.end());
    return samples[REPETITIONS / 2];
}

double seconds_of(const KernelRow& row, int runs) {
    const double start = thread_seconds();
    for (int i = 0; i < runs; i++)
        row.run();
    return thread_seconds() - start;
}

// Runs that take long beside the reading of the clock.
int find_runs(const KernelRow& row) {
    int runs = 1;
    while (seconds_of(row, runs) < SECONDS_EACH)
        runs *= 2;
    return runs;
}

double measure(const KernelRow& row, int runs) {
    const double frequency_before = core_frequency();
    const double seconds = seconds_of(row, runs);
    const double each = seconds / runs / row.count;
    if (row.unit == KernelRow::MICROSECONDS)
        return each * 1e6;
    return each * (frequency_before + core_frequency()) / 2.0;
}

std::vector<double> measure_levels(const KernelRow& row) {
    const size_t count = row.has_levels ? kernel_levels().size() : 1;
    std::vector<Samples> samples(count);
    for (size_t repetition = 0; repetition < REPETITIONS; repetition++) {
        for (size_t i = 0; i < count; i++) {
            use_kernel_level(row.has_levels ? kernel_levels()[i] : kernel_levels().back());
            samples[i][repetition] = measure(row, find_runs(row));
        }
    }
    std::vector<double> medians(count);
    std::transform(samples.begin(), samples.end(), medians.begin(), median);
    return medians;
}

// What does not depend on the kernels stands in the last column.
void print_row(const KernelRow& row, bool markdown) {
    const char* separator = markdown ? " | " : "  ";
    const char* unit = row.unit == KernelRow::CYCLES ? "cycles" : "us";
    std::printf(markdown ? "| %s | %s" : "%-40s%8s", row.name.c_str(), unit);
    const std::vector<double> values = measure_levels(row);
    for (size_t i = values.size(); i < kernel_levels().size(); i++)
        std::printf(markdown ? "%s%s" : "%s%10s", separator, "");
    for (const double value : values)
        std::printf(markdown ? "%s%.*f" : "%s%10.*f", separator,
                    value < 10    ? 2
                    : value < 100 ? 1
                                  : 0,
                    value);
    std::printf(markdown ? " |\n" : "\n");
    std::fflush(stdout);
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    bool markdown = false;
    std::string_view part;
    for (int i = 1; i < argc; i++) {
        if (std::strcmp(argv[i], "--markdown") == 0)
            markdown = true;
        else
            part = argv[i];
    }
    const FlushToZero flush_to_zero;
    std::printf(markdown ? "| | unit" : "%-48s", "");
    for (const KernelLevel& level : kernel_levels())
        std::printf(markdown ? " | %s" : "  %10s", level.name);
    std::printf(markdown ? " |\n|---|---" : "\n");
    for (size_t i = 0; markdown && i < kernel_levels().size(); i++)
        std::printf("|---:");
    std::printf(markdown ? "|\n" : "");
    for (const auto& rows : {oscillator_rows, filter_rows, note_rows, table_rows, master_rows}) {
        for (const KernelRow& row : rows()) {
            if (row.name.find(part) != std::string::npos)
                print_row(row, markdown);
        }
    }
    return 0;
}
