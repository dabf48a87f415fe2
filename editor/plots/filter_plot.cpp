// The response of the voice filter.

#include "editor/plots/filter_plot.h"

#include <algorithm>
#include <cmath>

#include "editor/plots/plot_frame.h"
#include "editor/plots/response_worker.h"

namespace tarquil {

namespace {

constexpr double LOWEST_GAIN = -66.0;
constexpr double HIGHEST_GAIN = 30.0;
constexpr double FINE = 0.1;

} // namespace

void FilterPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const FilterSettings filter = voice_filter_settings(bytes, host.get_view_state().plot_note);
    const Response& response = host.get_responses().get(VOICE_FILTER_RESPONSE, filter);
    const PlotFrame frame(area, 20.0, 20000.0, LOWEST_GAIN, HIGHEST_GAIN, true);
    frame.draw(canvas, frequency_lines(), decibel_lines(-60, 24, 12));
    const Color color = is_filter_on(filter) ? theme::ACCENT : theme::TEXT_DIM;
    std::vector<Point> points;
    for (size_t i = 0; i < response.size(); i++)
        points.push_back(frame.point(response_frequencies()[i], response[i]));
    canvas.clip(area);
    if (is_filter_on(filter)) {
        const double cutoff =
            20.0 * std::exp2(double(filter.cutoff_octaves)) + double(filter.key_frequency);
        const double x = frame.x(std::min(cutoff, 22050.0));
        canvas.line({x, area.y}, {x, area.bottom()}, theme::ACCENT_DIM, 1);
        canvas.fill_below(points, area.bottom(), color, 0.12);
    }
    canvas.polyline(points, color, 2);
    canvas.unclip();
    if (!is_filter_on(filter))
        canvas.text({area.x, area.y, area.w, area.h / 2},
                    filter.type == FILTER_NONE ? "Choose a type and a depth to switch the filter on"
                                               : "Choose a depth to switch the filter on",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    if (state.is_pressed)
        canvas.frame(area, theme::ACCENT_DIM, 4);
}

bool FilterPlot::press(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    if (pointer.button != Pointer::Button::LEFT ||
        !is_filter_on(voice_filter_settings(model.get_state().bytes, 60)))
        return false;
    model.begin_gesture("Filter");
    cutoff_value = model.value(CTRL_FILTER1_CUTOFF);
    resonance_value = model.value(CTRL_FILTER1_RESONANCE);
    last = pointer.at;
    return true;
}

void FilterPlot::drag(UiHost& host, const Pointer& pointer) {
    const double speed = pointer.shift ? FINE : 1.0;
    // 127 steps are ten octaves, of which the plot shows log2(1000).
    cutoff_value += (pointer.at.x - last.x) * speed * 127.0 * std::log2(1000.0) / 10.0 / area.w;
    resonance_value -= (pointer.at.y - last.y) * speed * 127.0 / area.h;
    last = pointer.at;
    cutoff_value = std::clamp(cutoff_value, 0.0, 127.0);
    resonance_value = std::clamp(resonance_value, 0.0, 127.0);
    host.get_model().set_value(CTRL_FILTER1_CUTOFF, int(std::lround(cutoff_value)));
    host.get_model().set_value(CTRL_FILTER1_RESONANCE, int(std::lround(resonance_value)));
}

void FilterPlot::release(UiHost& host) {
    host.get_model().end_gesture();
}

std::string FilterPlot::tooltip(UiHost& /*host*/) {
    return "Response to quiet sound at the chosen note\nDrag: cutoff sideways, resonance up and "
           "down";
}

std::vector<unsigned> FilterPlot::controllers() const {
    return {CTRL_FILTER1_CUTOFF, CTRL_FILTER1_RESONANCE};
}

} // namespace tarquil
