// The output's level with its peak hold and clip light.

#include "editor/view/output_meter.h"

#include <algorithm>

#include "common/number_text.h"

namespace tarquil {

OutputMeter::OutputMeter(const Rect& widget_area, const LevelMeter& shown,
                         std::function<void()> on_clear)
    : Widget(widget_area), meter(shown), clear(std::move(on_clear)) {}

void OutputMeter::draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& /*state*/) {
    constexpr double CLIP_WIDTH = 12.0;
    constexpr double WARM_LEVEL = -6.0; // dB
    Rect bars = area;
    const Rect clip = bars.cut_right(CLIP_WIDTH);
    bars.cut_right(3);
    const auto place = [&](double level) {
        return bars.w * (level - LevelMeter::QUIETEST) / -LevelMeter::QUIETEST;
    };
    for (unsigned side = 0; side < 2; side++) {
        const Rect bar{bars.x, bars.y + side * (bars.h / 2 + 0.5), bars.w, bars.h / 2 - 1};
        canvas.fill(bar, theme::WELL, 1.5);
        const double level = std::min(meter.get_level(side), 0.0);
        canvas.fill({bar.x, bar.y, place(std::min(level, WARM_LEVEL)), bar.h}, theme::GREEN, 1.5);
        if (level > WARM_LEVEL)
            canvas.fill({bar.x + place(WARM_LEVEL), bar.y, place(level) - place(WARM_LEVEL), bar.h},
                        theme::WARM);
        const double hold = std::min(meter.get_hold(side), 0.0);
        if (hold > LevelMeter::QUIETEST)
            canvas.fill({bar.x + place(hold) - 1.5, bar.y, 1.5, bar.h}, theme::TEXT);
    }
    canvas.fill(clip, meter.is_clipped() ? theme::RED : theme::WELL, 2);
}

bool OutputMeter::press(UiHost& /*host*/, const Pointer& /*pointer*/) {
    clear();
    return false;
}

std::string OutputMeter::tooltip(UiHost& /*host*/) {
    return "Output: " + fixed_number(std::max(meter.get_hold(0), meter.get_hold(1)), 1) +
           " dB\nThe red light: clipped; a click puts it out";
}

} // namespace tarquil
