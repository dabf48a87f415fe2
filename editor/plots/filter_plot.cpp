// The response of the voice filter.

#include "editor/plots/filter_plot.h"

#include <algorithm>
#include <cmath>

#include "editor/plots/plot_frame.h"
#include "editor/plots/response_worker.h"
#include "softsynth/parameters/note_frequency.h"

namespace tarquil {

namespace {

constexpr double LOWEST_GAIN = -66.0;
constexpr double HIGHEST_GAIN = 30.0;
constexpr double LINE_WIDTH = 1.5;
constexpr double HARMONICS_HEIGHT = 16.0;
constexpr int MOST_HARMONICS = 48;

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
    drawn = motion(host);
    if (is_filter_on(filter))
        draw_motion(canvas);
    draw_harmonics(canvas, drawn.key < 0 ? host.get_view_state().plot_note : drawn.key);
    canvas.unclip();
    if (!is_filter_on(filter))
        canvas.text({area.x, area.y, area.w, area.h / 2},
                    filter.type == FILTER_NONE ? "Choose a type and a depth to switch the filter on"
                                               : "Choose a depth to switch the filter on",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    if (state.is_pressed)
        canvas.frame(area, theme::ACCENT_DIM, 4);
}

FilterPlot::Motion FilterPlot::motion(UiHost& host) const {
    const NoteView& note = host.get_meters().note;
    if (note.is_sounding == 0)
        return {};
    FilterSettings filter =
        voice_filter_settings(host.get_model().get_state().bytes, int(note.note));
    const PlotFrame frame = frequency_frame(area, LOWEST_GAIN, HIGHEST_GAIN);
    const auto place = [&](float octaves) {
        filter.cutoff_octaves = std::clamp(octaves, -10.0F, 20.0F);
        return std::clamp(frame.x(cutoff_hertz(filter)), area.x, area.right());
    };
    Motion shown{note.start_time, int(note.note), place(note.cutoff), place(note.lowest_cutoff),
                 place(note.highest_cutoff)};
    if (drawn.key == shown.key && drawn.note == shown.note) {
        shown.left = std::min(shown.left, drawn.left);
        shown.right = std::max(shown.right, drawn.right);
    }
    return shown;
}

void FilterPlot::draw_motion(Canvas& canvas) const {
    if (drawn.key < 0)
        return;
    canvas.fill({drawn.left, area.y, drawn.right - drawn.left, area.h}, theme::WARM, 0, 0.10);
    canvas.line({drawn.now, area.y}, {drawn.now, area.bottom()}, theme::WARM, LINE_WIDTH);
}

Rect FilterPlot::harmonics_area() const {
    return {area.x, area.bottom() - HARMONICS_HEIGHT, area.w, HARMONICS_HEIGHT};
}

void FilterPlot::draw_harmonics(Canvas& canvas, int key) const {
    const Rect strip = harmonics_area();
    const PlotFrame frame = frequency_frame(area, LOWEST_GAIN, HIGHEST_GAIN);
    const double fundamental = double(note_frequency(float(key)));
    std::vector<Rect> lines;
    for (int i = 1; i <= MOST_HARMONICS; i++) {
        const double x = frame.x(fundamental * i);
        if (x >= area.x && x < area.right())
            lines.push_back({x, strip.bottom() - strip.h / std::sqrt(double(i)), 1.0,
                             strip.h / std::sqrt(double(i))});
    }
    canvas.fill_all(lines, theme::TEXT_MUTED, 0.9);
}

std::vector<Rect> FilterPlot::moved_areas(UiHost& host) {
    const Motion now = motion(host);
    std::vector<Rect> moved;
    const auto add = [&](double from, double to) {
        if (from != to)
            moved.push_back({std::min(from, to) - LINE_WIDTH, area.y,
                             std::abs(to - from) + 2 * LINE_WIDTH, area.h});
    };
    if (now.key != drawn.key || now.note != drawn.note) {
        moved.push_back(harmonics_area());
        if (drawn.key >= 0)
            add(drawn.left, drawn.right + LINE_WIDTH);
        if (now.key >= 0)
            add(now.left, now.right + LINE_WIDTH);
    } else if (now.key >= 0) {
        add(drawn.left, now.left);
        add(drawn.right, now.right);
        if (drawn.now != now.now) {
            add(drawn.now, drawn.now + LINE_WIDTH);
            add(now.now, now.now + LINE_WIDTH);
        }
    }
    return moved;
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
           "down\nOrange: where the last note of this program moves the cutoff; below: its "
           "harmonics";
}

std::vector<unsigned> FilterPlot::controllers() const {
    return {CTRL_FILTER1_CUTOFF, CTRL_FILTER1_RESONANCE};
}

} // namespace tarquil
