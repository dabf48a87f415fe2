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

} // namespace

void FilterPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const FilterSettings filter = voice_filter_settings(bytes, host.get_view_state().plot_note);
    const Response& response = host.get_responses().get(VOICE_FILTER_RESPONSE, filter);
    const PlotFrame frame = frequency_frame(area, LOWEST_GAIN, HIGHEST_GAIN);
    frame.draw(canvas, frequency_lines(), decibel_lines(-60, 24, 12));
    const Color color = is_filter_on(filter) ? theme::ACCENT : theme::TEXT_DIM;
    const std::vector<Point> points = response_points(frame, response);
    canvas.clip(area);
    if (is_filter_on(filter)) {
        const double x = frame.x(std::min(cutoff_hertz(filter), 22050.0));
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
    cutoff.start(model.value(CTRL_FILTER1_CUTOFF));
    resonance.start(model.value(CTRL_FILTER1_RESONANCE));
    last = pointer.at;
    return true;
}

void FilterPlot::drag(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    const double speed = drag_speed(pointer);
    const PlotFrame frame = frequency_frame(area, LOWEST_GAIN, HIGHEST_GAIN);
    model.set_value(CTRL_FILTER1_CUTOFF,
                    cutoff.move((pointer.at.x - last.x) * speed * cutoff_steps(frame)));
    model.set_value(CTRL_FILTER1_RESONANCE,
                    resonance.move((last.y - pointer.at.y) * speed * 127.0 / area.h));
    last = pointer.at;
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
