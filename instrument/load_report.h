// What a load came across that was no reason to fail.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarquil {

struct LoadReport {
    // More lines than this are counted only.
    static constexpr size_t MAX_WARNINGS = 1000;

    // One line each, without a line feed: "instrument5: main_volume not found, using defaults".
    std::vector<std::string> warnings;

    unsigned num_missing = 0;      // keys that gave their controllers their defaults
    unsigned num_out_of_range = 0; // numbers that were clamped
    unsigned num_others = 0;

    // Stands in front of what is added: "instrument5: ", or nothing.
    std::string place;

    // What the load was about in one line, "3 keys are missing and take their defaults"; empty when
    // there is nothing to say.
    [[nodiscard]] std::string summary() const;
};

// Each goes to the log and, when there is a report, into it.
void report_missing_key(LoadReport* report, const char* key);
void report_out_of_range(LoadReport* report, unsigned controller, float value);
void report_warning(LoadReport* report, std::string_view text);

} // namespace tarquil
