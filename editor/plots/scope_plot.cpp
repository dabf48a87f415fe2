// The output over time, and over frequency.

#include "editor/plots/scope_plot.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "editor/plots/envelope_axis.h"
#include "editor/plots/plot_frame.h"

namespace tarquil {

namespace {

constexpr double LINE_HEIGHT = 1.5;

// One column for each unit of the width, from the lowest sample in it to the highest: a thousand
// rectangles take a tenth of the time of a line through as many points.
std::vector<Rect> wave_columns(const PlotFrame& frame, std::span<const float> samples) {
    std::vector<Rect> columns;
    const Rect& area = frame.get_area();
    const auto count = size_t(area.w);
    columns.reserve(count);
    const double step = double(samples.size() - 1) / double(count);
    const auto value_at = [&](double place) {
        const auto index = std::min(size_t(place), samples.size() - 2);
        const auto part = float(place - double(index));
        return samples[index] + (samples[index + 1] - samples[index]) * part;
    };
    for (size_t i = 0; i < count; i++) {
        const double from = step * double(i);
        const double to = from + step;
        float lowest = value_at(from);
        float highest = lowest;
        for (double place = std::floor(from) + 1; place < to; place += 1.0) {
            lowest = std::min(lowest, value_at(place));
            highest = std::max(highest, value_at(place));
        }
        lowest = std::min(lowest, value_at(to));
        highest = std::max(highest, value_at(to));
        const double top = frame.y(double(highest)) - LINE_HEIGHT / 2;
        columns.push_back(
            {area.x + double(i), top, 1.0, frame.y(double(lowest)) + LINE_HEIGHT / 2 - top});
    }
    return columns;
}

// The line along levels, as columns that meet.
std::vector<Rect> outline(const PlotFrame& frame, std::span<const float> levels) {
    const Rect& area = frame.get_area();
    const double width = area.w / double(levels.size());
    std::vector<Rect> columns;
    double before = frame.y(double(levels[0]));
    for (size_t i = 0; i < levels.size(); i++) {
        const double y = frame.y(double(levels[i]));
        if (std::min(y, before) < area.bottom() - 1)
            columns.push_back({area.x + width * double(i), std::min(y, before), width,
                               std::abs(y - before) + LINE_HEIGHT});
        before = y;
    }
    return columns;
}

} // namespace

void ScopePlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const OutputScope& scope = host.get_view_state().scope;
    drawn = scope.num_updates();
    const double range = scope.range();
    const double seconds = scope.shown_ms / 1000.0;
    const PlotFrame frame(area, 0.0, seconds, -range * 1.05, range * 1.05);
    std::vector<GridLine> rows;
    for (const double part : {-1.0, -0.5, 0.0, 0.5, 1.0})
        rows.push_back({range * part, trimmed_number(range * part, 3)});
    frame.draw(canvas, time_lines(seconds), rows);
    if (scope.left().empty())
        return;
    canvas.clip(area);
    canvas.fill_all(wave_columns(frame, scope.right()), theme::PARTS[1], 0.8);
    canvas.fill_all(wave_columns(frame, scope.left()), theme::PARTS[0], 0.8);
    canvas.unclip();
    canvas.text({area.right() - 70, area.y + 4, 30, 14}, "left", {9.5, theme::PARTS[0]});
    canvas.text({area.right() - 40, area.y + 4, 34, 14}, "right", {9.5, theme::PARTS[1]});
}

std::vector<Rect> ScopePlot::moved_areas(UiHost& host) {
    return host.get_view_state().scope.num_updates() == drawn ? std::vector<Rect>()
                                                              : std::vector{area};
}

void SpectrumPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const OutputScope& scope = host.get_view_state().scope;
    drawn = scope.num_updates();
    const PlotFrame frame = frequency_frame(area, double(OutputScope::LOWEST_DB), 6.0);
    frame.draw(canvas, frequency_lines(), decibel_lines(-84, 0, 12));
    if (scope.levels().empty())
        return;
    std::vector<Rect> bars;
    const double width = area.w / double(OutputScope::NUM_LEVELS);
    for (size_t i = 0; i < OutputScope::NUM_LEVELS; i++) {
        const double y = frame.y(double(scope.levels()[i]));
        bars.push_back({area.x + width * double(i), y, width, area.bottom() - y});
    }
    canvas.clip(area);
    canvas.fill_all(bars, theme::ACCENT, 0.25);
    canvas.fill_all(outline(frame, scope.levels()), theme::ACCENT, 1.0);
    if (scope.holds_peaks)
        canvas.fill_all(outline(frame, scope.peaks()), theme::WARM, 0.8);
    canvas.unclip();
}

bool SpectrumPlot::press(UiHost& host, const Pointer& /*pointer*/) {
    host.get_view_state().scope.clear_peaks();
    return false;
}

std::vector<Rect> SpectrumPlot::moved_areas(UiHost& host) {
    return host.get_view_state().scope.num_updates() == drawn ? std::vector<Rect>()
                                                              : std::vector{area};
}

} // namespace tarquil
