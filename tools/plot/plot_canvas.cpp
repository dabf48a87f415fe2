// The layout of a plot.

#include "tools/plot/plot_canvas.h"

#include <cstddef>
#include <iterator>

#include "common/printable_text.h"

namespace tarquil {

namespace {

// Pixels around the area between the axes: tick labels and titles; the legend at the right.
constexpr double MARGIN_LEFT = 76;
constexpr double MARGIN_RIGHT = 244;
constexpr double MARGIN_TOP = 52;
constexpr double MARGIN_BOTTOM = 64;

constexpr double TITLE_SIZE = 17;
constexpr double AXIS_TITLE_SIZE = 13;
constexpr double LABEL_SIZE = 12;
constexpr double DETAIL_SIZE = 11;

// Width of a wide letter of a bold sans-serif font, relative to its size.
constexpr double WIDE_LETTER = 0.7;

constexpr double TICK_LENGTH = 5;
constexpr double LEGEND_GAP = 18;   // from the area to the legend
constexpr double SAMPLE_WIDTH = 24; // of the piece of line in the legend

constexpr double CURVE_WIDTH = 1.6;
constexpr double MAIN_CURVE_WIDTH = 2.6;

constexpr Color BACKGROUND = 0xFFFFFF;
constexpr Color TEXT_COLOR = 0x222222;
constexpr Color DETAIL_COLOR = 0x666666;
constexpr Color FRAME_COLOR = 0x777777;
constexpr Color GRID_COLOR = 0xDDDDDD;
constexpr Color MINOR_GRID_COLOR = 0xF0F0F0;

// The palette of M. Okabe and K. Ito (2008), which the colour-blind can tell apart.
constexpr Color MAIN_CURVE_COLOR = 0x222222;
constexpr Color CURVE_COLORS[] = {0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7, 0xE69F00, 0x56B4E9};

} // namespace

PlotCanvas::PlotCanvas(PlotPainter& plot_painter, int width, int height)
    : painter(plot_painter), picture{0, 0, double(width), double(height)},
      area{MARGIN_LEFT, MARGIN_TOP, width - MARGIN_LEFT - MARGIN_RIGHT,
           height - MARGIN_TOP - MARGIN_BOTTOM} {}

void PlotCanvas::draw(const Plot& plot) {
    painter.fill(picture, BACKGROUND);
    const double room = (picture.width - area.left - LEGEND_GAP) / (TITLE_SIZE * WIDE_LETTER);
    painter.text(printable_text(plot.title, size_t(room)), area.left, MARGIN_TOP - 22,
                 {.size = TITLE_SIZE, .color = TEXT_COLOR, .is_bold = true});
    draw_x_axis(plot.x);
    draw_y_axis(plot.y);
    draw_curves(plot);
    painter.frame(area, FRAME_COLOR, 1);
}

void PlotCanvas::draw_x_axis(const PlotAxis& axis) {
    const double bottom = area.top + area.height;
    for (const AxisTick& tick : axis.ticks()) {
        const double x = area.left + axis.position(tick.value) * area.width;
        const bool labelled = !tick.label.empty();
        painter.line({{x, area.top}, {x, bottom}}, labelled ? GRID_COLOR : MINOR_GRID_COLOR, 1);
        if (!labelled)
            continue;
        painter.line({{x, bottom}, {x, bottom + TICK_LENGTH}}, FRAME_COLOR, 1);
        painter.text(tick.label, x, bottom + TICK_LENGTH + LABEL_SIZE + 3,
                     {.size = LABEL_SIZE, .color = TEXT_COLOR, .align = TextAlign::MIDDLE});
    }
    painter.text(axis.get_title(), area.left + area.width / 2, bottom + 46,
                 {.size = AXIS_TITLE_SIZE, .color = TEXT_COLOR, .align = TextAlign::MIDDLE});
}

void PlotCanvas::draw_y_axis(const PlotAxis& axis) {
    for (const AxisTick& tick : axis.ticks()) {
        const double y = area.top + (1 - axis.position(tick.value)) * area.height;
        painter.line({{area.left, y}, {area.left + area.width, y}}, GRID_COLOR, 1);
        painter.line({{area.left - TICK_LENGTH, y}, {area.left, y}}, FRAME_COLOR, 1);
        painter.text(tick.label, area.left - TICK_LENGTH - 5, y + LABEL_SIZE / 3,
                     {.size = LABEL_SIZE, .color = TEXT_COLOR, .align = TextAlign::END});
    }
    painter.text(axis.get_title(), 22, area.top + area.height / 2,
                 {.size = AXIS_TITLE_SIZE,
                  .color = TEXT_COLOR,
                  .align = TextAlign::MIDDLE,
                  .is_upright = true});
}

void PlotCanvas::draw_curves(const Plot& plot) {
    size_t next_color = 0;
    double legend_top = area.top;
    for (const PlotCurve& curve : plot.curves) {
        Color color = MAIN_CURVE_COLOR;
        if (!curve.is_main)
            color = CURVE_COLORS[next_color++ % std::size(CURVE_COLORS)];
        std::vector<PlotPoint> points;
        points.reserve(curve.points.size());
        for (const PlotPoint& point : curve.points)
            points.push_back({area.left + plot.x.position(point.x) * area.width,
                              area.top + (1 - plot.y.position(point.y)) * area.height});
        painter.begin_clip(area);
        painter.line(points, color, curve.is_main ? MAIN_CURVE_WIDTH : CURVE_WIDTH);
        painter.end_clip();
        legend_top = draw_legend_entry(curve, color, legend_top);
    }
}

double PlotCanvas::draw_legend_entry(const PlotCurve& curve, Color color, double top) {
    const double left = area.left + area.width + LEGEND_GAP;
    const double middle = top + LABEL_SIZE / 2 + 2;
    painter.line({{left, middle}, {left + SAMPLE_WIDTH, middle}}, color,
                 curve.is_main ? MAIN_CURVE_WIDTH : CURVE_WIDTH);
    const double text_left = left + SAMPLE_WIDTH + 8;
    double base_line = top + LABEL_SIZE;
    painter.text(curve.name, text_left, base_line, {.size = LABEL_SIZE, .color = TEXT_COLOR});
    for (const std::string& detail : curve.details) {
        base_line += DETAIL_SIZE + 4;
        painter.text(detail, text_left, base_line, {.size = DETAIL_SIZE, .color = DETAIL_COLOR});
    }
    return base_line + 12;
}

} // namespace tarquil
