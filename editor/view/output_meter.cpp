// The output's level with a scale in dB, its peak as a number and a clip lamp.

#include "editor/view/output_meter.h"

#include <algorithm>

#include "common/number_text.h"

namespace tarquil {

namespace {

constexpr double BARS_HEIGHT = 14.0;
constexpr double NUMBER_WIDTH = 40.0;
constexpr double LAMP_WIDTH = 28.0;
constexpr double SPACE = 6.0;
constexpr double WARM_LEVEL = -6.0;    // dB
constexpr double SILENT_PEAK = -100.0; // shown as none

} // namespace

OutputMeter::OutputMeter(const Rect& widget_area, const LevelMeter& shown,
                         std::function<void()> on_clear)
    : Widget(widget_area), meter(shown),
      clear(std::move(on_clear)), bars{area.x, area.y,
                                       area.w - NUMBER_WIDTH - LAMP_WIDTH - 2 * SPACE, BARS_HEIGHT},
      number{bars.right() + SPACE, area.y, NUMBER_WIDTH, BARS_HEIGHT}, lamp{number.right() + SPACE,
                                                                            area.y, LAMP_WIDTH,
                                                                            BARS_HEIGHT} {}

double OutputMeter::place(double level) const {
    const double part = (level - LevelMeter::QUIETEST) / -LevelMeter::QUIETEST;
    return bars.x + bars.w * std::clamp(part, 0.0, 1.0);
}

std::string OutputMeter::peak_text() const {
    return meter.get_peak() < SILENT_PEAK ? "-inf" : fixed_number(meter.get_peak(), 1);
}

void OutputMeter::draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& /*state*/) {
    drawn = meter;
    drawn_peak = peak_text();
    draw_bars(canvas);
    draw_scale(canvas);
    canvas.text(number, drawn_peak, {theme::SMALL, theme::TEXT, Align::RIGHT});
    canvas.text({number.x, number.bottom(), number.w, area.bottom() - number.bottom()}, "peak",
                {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
    const bool is_lit = meter.is_clipped();
    canvas.fill(lamp, is_lit ? theme::RED : theme::WELL, 2);
    canvas.text(lamp, "clip",
                {theme::SMALL, is_lit ? theme::BACKGROUND : theme::TEXT_MUTED, Align::CENTER,
                 is_lit ? Weight::BOLD : Weight::NORMAL});
}

void OutputMeter::draw_bars(Canvas& canvas) const {
    for (unsigned side = 0; side < 2; side++) {
        const Rect bar{bars.x, bars.y + side * (bars.h / 2 + 0.5), bars.w, bars.h / 2 - 1};
        canvas.fill(bar, theme::WELL);
        const double level = meter.get_level(side);
        canvas.fill({bar.x, bar.y, place(std::min(level, WARM_LEVEL)) - bar.x, bar.h},
                    theme::GREEN);
        if (level > WARM_LEVEL)
            canvas.fill({place(WARM_LEVEL), bar.y, place(level) - place(WARM_LEVEL), bar.h},
                        theme::WARM);
        const double hold = place(meter.get_hold(side));
        if (hold > bar.x)
            canvas.fill({hold - 1.5, bar.y, 1.5, bar.h}, theme::TEXT);
    }
}

void OutputMeter::draw_scale(Canvas& canvas) const {
    for (const int level : {-60, -48, -36, -24, -12, -6, 0}) {
        const double x = place(level);
        canvas.line({x, bars.bottom() + 1}, {x, bars.bottom() + 3}, theme::OUTLINE);
        if (level == -6) // no room between its neighbours
            continue;
        Rect text{x - 14, bars.bottom() + 3, 28, area.bottom() - bars.bottom() - 3};
        Align align = Align::CENTER;
        if (level == 0) {
            text.x = x - text.w + 2;
            align = Align::RIGHT;
        } else if (x == bars.x) {
            text.x = x;
            align = Align::LEFT;
        }
        canvas.text(text, std::to_string(level), {theme::SMALL, theme::TEXT_MUTED, align});
    }
}

// Along the bars only what lies between the old and the new levels.
std::vector<Rect> OutputMeter::moved_areas(UiHost& /*host*/) {
    std::vector<Rect> moved;
    double left = bars.right();
    double right = bars.x;
    const auto add = [&](double before, double now) {
        if (before == now)
            return;
        left = std::min({left, place(before), place(now)});
        right = std::max({right, place(before), place(now)});
    };
    for (unsigned side = 0; side < 2; side++) {
        add(drawn.get_level(side), meter.get_level(side));
        add(drawn.get_hold(side), meter.get_hold(side));
    }
    if (left <= right)
        moved.push_back({left - 2, bars.y, right - left + 4, bars.h});
    if (peak_text() != drawn_peak)
        moved.push_back(number);
    if (drawn.is_clipped() != meter.is_clipped())
        moved.push_back(lamp);
    return moved;
}

bool OutputMeter::press(UiHost& /*host*/, const Pointer& /*pointer*/) {
    clear();
    return false;
}

std::string OutputMeter::tooltip(UiHost& /*host*/) {
    return "Output level in dB, and its peak of the last 3 seconds\nThe lamp stays red once the "
           "output has clipped; a click puts it out";
}

Spoken OutputMeter::spoken(UiHost& host) {
    Spoken spoken = spoken_of_tooltip(tooltip(host));
    spoken.text = "peak " + peak_text() + " dB" + (meter.is_clipped() ? ", clipped" : "");
    spoken.press = clear;
    return spoken;
}

} // namespace tarquil
