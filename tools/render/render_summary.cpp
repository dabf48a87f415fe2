// What a render tells about the sound that it has written.

#include "tools/render/render_summary.h"

#include <nlohmann/json.hpp>

#include "common/number_text.h"
#include "tools/render/gm_report_text.h"

namespace tarquil {

namespace {

std::string level_text(const std::optional<double>& level) {
    return level ? fixed_number(*level, 1) : "-inf";
}

double length_in_seconds(const RenderResult& result) {
    return double(result.num_frames) / result.format.rate;
}

} // namespace

std::string summary_text(const std::string& path, const RenderResult& result) {
    return path + ": " + fixed_number(length_in_seconds(result), 2) + " s, " +
           container_name(result.format) + " " + sample_type_name(result.format) + " " +
           std::to_string(result.format.rate) + " Hz, peak " + level_text(result.peak_dbfs) +
           " dBFS, " + level_text(result.loudness_lufs) + " LUFS, " +
           fixed_number(result.times_real_time, 1) + " times real time\n";
}

std::string summary_json(const std::string& path, const RenderResult& result, bool with_report) {
    const auto level = [](const std::optional<double>& value) {
        return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
    };
    nlohmann::ordered_json object = {
        {"output", path},
        {"format", container_name(result.format)},
        {"samples", sample_type_name(result.format)},
        {"rate", result.format.rate},
        {"frames", result.num_frames},
        {"seconds", length_in_seconds(result)},
        {"peak_dbfs", level(result.peak_dbfs)},
        {"loudness_lufs", level(result.loudness_lufs)},
        {"times_real_time", result.times_real_time},
    };
    if (with_report && result.report)
        object["midi"] = gm_report_json(*result.report, result.most_voices);
    // A path may hold bytes that are not UTF-8.
    return object.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace tarquil
