// The lines about what is under the pointer.

#include "editor/view/tooltip.h"

#include <algorithm>
#include <vector>

#include "editor/kit/window_size.h"

namespace tarquil {

Rect draw_tooltip_box(Canvas& canvas, Point pointer, const std::string& text) {
    constexpr double LINE_HEIGHT = 16.0;
    std::vector<std::string> lines;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    double width = 0.0;
    for (const std::string& line : lines)
        width = std::max(width, canvas.text_width(line, theme::SMALL));
    Rect box{pointer.x + 12, pointer.y + 18, width + 18, LINE_HEIGHT * double(lines.size()) + 10};
    box.x = std::max(4.0, std::min(box.x, WINDOW_WIDTH - box.w - 4));
    if (box.bottom() > WINDOW_HEIGHT - 4)
        box.y = pointer.y - box.h - 8;
    canvas.fill(box, theme::TOOLTIP, 4, 0.96);
    canvas.frame(box, theme::OUTLINE, 4);
    for (size_t i = 0; i < lines.size(); i++)
        canvas.text({box.x + 9, box.y + 5 + LINE_HEIGHT * double(i), box.w, LINE_HEIGHT}, lines[i],
                    {theme::SMALL, i == 0 ? theme::TEXT : theme::TEXT_MUTED});
    return box;
}

} // namespace tarquil
