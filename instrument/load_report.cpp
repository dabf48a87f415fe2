// What a load came across that was no reason to fail.

#include "instrument/load_report.h"

#include "common/log/log.h"
#include "common/number_text.h"

namespace tarquil {

namespace {

void add_line(LoadReport& report, std::string_view text) {
    if (report.warnings.size() < LoadReport::MAX_WARNINGS)
        report.warnings.push_back(std::string(report.place).append(text));
}

std::string counted(unsigned count, const char* one, const char* many) {
    return std::to_string(count) + (count == 1 ? one : many);
}

} // namespace

std::string LoadReport::summary() const {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (num_missing > 0)
        add(counted(num_missing, " key is missing and takes its default",
                    " keys are missing and take their defaults"));
    if (num_out_of_range > 0)
        add(counted(num_out_of_range, " number is out of range", " numbers are out of range"));
    if (num_others == 1 && warnings.size() == 1)
        add(warnings.front());
    else if (num_others > 0)
        add(counted(num_others, " line is not understood", " lines are not understood"));
    return text;
}

void report_missing_key(LoadReport* report, const char* key) {
    logPrintf("%s not found, using defaults\n", key);
    if (report == nullptr)
        return;
    report->num_missing++;
    add_line(*report, std::string(key) + " not found, using defaults");
}

void report_out_of_range(LoadReport* report, unsigned controller, float value) {
    const std::string text = "Controller " + std::to_string(controller) + " value " +
                             number_to_text(double(value)) + " out of range, clamping to lowest";
    logPrintf("%s\n", text.c_str());
    if (report == nullptr)
        return;
    report->num_out_of_range++;
    add_line(*report, text);
}

void report_warning(LoadReport* report, std::string_view text) {
    logPrintf("%s\n", std::string(text).c_str());
    if (report == nullptr)
        return;
    report->num_others++;
    add_line(*report, text);
}

} // namespace tarquil
