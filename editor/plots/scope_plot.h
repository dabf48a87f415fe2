// The output over time, and over frequency.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class ScopePlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "What is heard, left and right, from a rising zero crossing on\nThe height grows "
               "and shrinks with the sound";
    }
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    [[nodiscard]] bool shows_output() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    unsigned drawn = 0;
};

class SpectrumPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    // Forgets the peaks.
    bool press(UiHost& host, const Pointer& pointer) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "Level over frequency; a sine at full scale is 0 dB\nA click forgets the peaks";
    }
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    [[nodiscard]] bool shows_output() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    unsigned drawn = 0;
};

} // namespace tarquil
