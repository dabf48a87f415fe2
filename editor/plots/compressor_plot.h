// The gain curve of a band of the master compressor with the live level on it and its attenuation,
// and the crossovers.

#pragma once

#include "editor/kit/widget.h"
#include "editor/plots/plot_frame.h"

namespace tarquil {

class CompressorPlot : public Widget {
  public:
    // `band` 0..3
    CompressorPlot(const Rect& widget_area, unsigned shown) : Widget(widget_area), band(shown) {}
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "Level in against level out; the dot is the band's level now\n"
               "Right: by how many dB the band is turned down, without makeup";
    }
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    [[nodiscard]] PlotFrame frame() const;
    [[nodiscard]] Rect meter_area() const;
    // In dB, 0 or less.
    [[nodiscard]] double gain(UiHost& host) const;
    // Of the dot; NOWHERE when the band is silent.
    [[nodiscard]] Point dot(UiHost& host) const;
    void draw_attenuation(Canvas& canvas, double decibels) const;

    const unsigned band;
    Point drawn_dot{};
    double drawn_gain = 0.0;
};

class CrossoverPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    std::string tooltip(UiHost& /*host*/) override { return "Drag the lines between the bands"; }
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] std::vector<unsigned> controllers() const override;

  private:
    [[nodiscard]] double place(const ControllerBytes& bytes, int crossover) const;

    int dragged = 0;
    double dragged_place = 0.0;
    Point last;
};

} // namespace tarquil
