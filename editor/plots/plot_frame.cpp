// The ground of a plot.

#include "editor/plots/plot_frame.h"

#include <cmath>

namespace tarquil {

namespace {

constexpr double LOWEST_HZ = 20.0;
constexpr double HIGHEST_HZ = 20000.0;

// A place far beyond the plot for what no picture has, such as a notch's gain of -infinity dB.
double drawable(double place, double from, double size) {
    constexpr double REACH = 100.0;
    return std::fmin(std::fmax(place, from - REACH * size), from + REACH * size);
}

} // namespace

PlotFrame::PlotFrame(const Rect& plot_area, double left, double right, double bottom, double top,
                     bool logarithmic_x)
    : area(plot_area), x_from(left), x_to(right), y_from(bottom), y_to(top),
      is_logarithmic(logarithmic_x) {}

double PlotFrame::x(double value) const {
    const double part = is_logarithmic ? std::log(value / x_from) / std::log(x_to / x_from)
                                       : (value - x_from) / (x_to - x_from);
    return drawable(area.x + part * area.w, area.x, area.w);
}

double PlotFrame::y(double value) const {
    return drawable(area.bottom() - (value - y_from) / (y_to - y_from) * area.h, area.y, area.h);
}

Point PlotFrame::point(double x_value, double y_value) const {
    return {x(x_value), y(y_value)};
}

double PlotFrame::x_value(double x_place) const {
    const double part = (x_place - area.x) / area.w;
    return is_logarithmic ? x_from * std::pow(x_to / x_from, part)
                          : x_from + part * (x_to - x_from);
}

double PlotFrame::y_value(double y_place) const {
    return y_from + (area.bottom() - y_place) / area.h * (y_to - y_from);
}

void PlotFrame::draw(Canvas& canvas, const std::vector<GridLine>& columns,
                     const std::vector<GridLine>& rows, Numbers numbers) const {
    constexpr double TEXT_SIZE = theme::SMALL;
    const TextStyle style{TEXT_SIZE, theme::TEXT_MUTED};
    canvas.fill(area, theme::WELL, 4);
    for (const GridLine& line : columns) {
        const double place = std::round(x(line.value)) + 0.5;
        if (place <= area.x + 1 || place >= area.right() - 1)
            continue;
        canvas.line({place, area.y}, {place, area.bottom()},
                    line.text.empty() ? theme::GRID : theme::GRID_STRONG, 1);
        if (numbers == Numbers::OUTSIDE)
            canvas.text({place - 28, area.bottom() + 1, 56, 12}, line.text,
                        {TEXT_SIZE, theme::TEXT_MUTED, Align::CENTER});
        else
            canvas.text({place + 3, area.bottom() - 13, 60, 12}, line.text, style);
    }
    for (const GridLine& line : rows) {
        const double place = std::round(y(line.value)) + 0.5;
        if (place <= area.y + 1 || place >= area.bottom() - 1)
            continue;
        canvas.line({area.x, place}, {area.right(), place},
                    line.value == 0.0 ? theme::GRID_STRONG : theme::GRID, 1);
        if (numbers == Numbers::OUTSIDE)
            canvas.text({area.x - 40, place - 7, 36, 12}, line.text,
                        {TEXT_SIZE, theme::TEXT_MUTED, Align::RIGHT});
        else if (place > area.y + 12 && place < area.bottom() - 14)
            canvas.text({area.x + 4, place - 12, 60, 12}, line.text, style);
    }
}

std::vector<Rect> moved_dot(Point before, Point now, double radius) {
    if (before.x == now.x && before.y == now.y)
        return {};
    return {square_around(before, radius + 1), square_around(now, radius + 1)};
}

PlotFrame frequency_frame(const Rect& plot_area, double bottom, double top) {
    return {plot_area, LOWEST_HZ, HIGHEST_HZ, bottom, top, true};
}

double cutoff_steps(const PlotFrame& frame) {
    constexpr double STEPS_PER_OCTAVE = 12.7;
    return STEPS_PER_OCTAVE * std::log2(HIGHEST_HZ / LOWEST_HZ) / frame.get_area().w;
}

int nearest_place(const std::vector<Point>& places, Point at, double reach) {
    int nearest = -1;
    for (size_t i = 0; i < places.size(); i++) {
        const double distance = std::hypot(places[i].x - at.x, places[i].y - at.y);
        if (distance < reach) {
            nearest = int(i);
            reach = distance;
        }
    }
    return nearest;
}

const std::vector<GridLine>& frequency_lines() {
    static const std::vector<GridLine> lines = [] {
        std::vector<GridLine> made;
        for (const double decade : {10.0, 100.0, 1000.0, 10000.0}) {
            for (int i = 1; i < 10; i++) {
                std::string text;
                if (i == 1)
                    text = decade < 1000.0 ? std::to_string(int(decade))
                                           : std::to_string(int(decade / 1000)) + "k";
                made.push_back({decade * i, std::move(text)});
            }
        }
        return made;
    }();
    return lines;
}

std::vector<GridLine> decibel_lines(int lowest, int highest, int step) {
    std::vector<GridLine> lines;
    for (int gain = lowest; gain <= highest; gain += step)
        lines.push_back({double(gain), std::to_string(gain) + (gain == 0 ? " dB" : "")});
    return lines;
}

} // namespace tarquil
