// The line at the bottom of the window.

#include "editor/view/status_line.h"

#include <algorithm>

#include "editor/widgets/message_line.h"

namespace tarquil {

namespace {

constexpr double STATUS_MARGIN = 14.0;
constexpr double STATUS_SPACE = 20.0;

constexpr const char* HELP =
    "Drag or wheel to change, Shift for fine steps, double click for the default, "
    "right click for more, click a number to type it";

// A banner over the whole width, with a sign.
void draw_warning(Canvas& canvas, const Rect& area, const std::string& text) {
    canvas.fill(area, theme::WARM);
    Rect rest = area.inset(STATUS_MARGIN, 0);
    const Point at = rest.cut_left(22).center();
    const double x = at.x - 3;
    canvas.polygon({{x, at.y - 7.5}, {x + 8, at.y + 6.5}, {x - 8, at.y + 6.5}}, theme::BACKGROUND);
    canvas.line({x, at.y - 3}, {x, at.y + 2}, theme::WARM, 1.8);
    canvas.disc({x, at.y + 4.2}, 1.1, theme::WARM);
    canvas.text(rest, text, {theme::SMALL, theme::BACKGROUND, Align::LEFT, Weight::BOLD});
}

} // namespace

void draw_status(Canvas& canvas, const Rect& area, const StatusLine& status) {
    Rect rest = area.inset(STATUS_MARGIN, 0);
    if (!status.message.empty()) {
        draw_message(canvas, rest, status.message, status.kind);
        return;
    }
    if (status.notice.kind == EditorNotice::Kind::WARNING) {
        draw_warning(canvas, area, status.notice.text);
        return;
    }
    if (status.notice.kind == EditorNotice::Kind::STATE) {
        const double width = canvas.text_width(status.notice.text, theme::SMALL);
        canvas.text(rest.cut_right(std::min(width, rest.w / 2)), status.notice.text,
                    {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
        rest.cut_right(STATUS_SPACE);
    }
    canvas.text(rest, HELP, {theme::SMALL, theme::TEXT_DIM});
}

} // namespace tarquil
