// A line that tells what came of something.

#include "editor/widgets/message_line.h"

namespace tarquil {

namespace {

constexpr double MESSAGE_MARK_WIDTH = 20.0;
constexpr double RADIUS = 6.5;
constexpr double REACH = 3.0; // of the strokes from the middle
constexpr double STROKE = 1.8;

void draw_cross(Canvas& canvas, Point at) {
    canvas.disc(at, RADIUS, theme::RED);
    for (const double side : {-1.0, 1.0})
        canvas.line({at.x - REACH, at.y - side * REACH}, {at.x + REACH, at.y + side * REACH},
                    theme::BACKGROUND, STROKE);
}

void draw_tick(Canvas& canvas, Point at) {
    canvas.polyline({{at.x - 5, at.y}, {at.x - 1.5, at.y + 4}, {at.x + 5, at.y - 4.5}},
                    theme::GREEN, STROKE);
}

} // namespace

void draw_message(Canvas& canvas, const Rect& area, const std::string& text, MessageKind kind) {
    if (kind == MessageKind::NOTE) {
        canvas.text(area, text, {theme::SMALL, theme::WARM});
        return;
    }
    Rect rest = area;
    const Point mark = rest.cut_left(MESSAGE_MARK_WIDTH).center();
    const Point at{area.x + RADIUS, mark.y};
    const bool has_failed = kind == MessageKind::FAILED;
    if (has_failed)
        draw_cross(canvas, at);
    else
        draw_tick(canvas, at);
    canvas.text(rest, text,
                {theme::SMALL, has_failed ? theme::RED : theme::GREEN, Align::LEFT,
                 has_failed ? Weight::BOLD : Weight::NORMAL});
}

} // namespace tarquil
