// The output's level with its peak hold and clip light.

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
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }

  private:
    const LevelMeter& meter;
    const std::function<void()> clear;
};

} // namespace tarquil
