// The output's level with a scale in dB, its peak as a number and a clip lamp.

#pragma once

#include <functional>

#include "editor/kit/level_meter.h"
#include "editor/kit/widget.h"

namespace tarquil {

class OutputMeter : public Widget {
  public:
    OutputMeter(const Rect& widget_area, const LevelMeter& shown, std::function<void()> on_clear);

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    std::string tooltip(UiHost& host) override;
    Spoken spoken(UiHost& host) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    void draw_bars(Canvas& canvas) const;
    void draw_scale(Canvas& canvas) const;
    [[nodiscard]] double place(double level) const;
    [[nodiscard]] std::string peak_text() const;

    const LevelMeter& meter;
    const std::function<void()> clear;
    const Rect bars;
    const Rect number;
    const Rect lamp;

    // as drawn last
    LevelMeter drawn;
    std::string drawn_peak;
};

} // namespace tarquil
