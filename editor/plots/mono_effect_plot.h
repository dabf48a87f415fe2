// What an insert effect does to a sound: its transfer curve, its response, or a sine through it.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class MonoEffectPlot : public Widget {
  public:
    // `effect` 0 or 1
    MonoEffectPlot(const Rect& widget_area, unsigned shown) : Widget(widget_area), effect(shown) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    // Level in against level out, from -1 to 1.
    template <typename Shape>
    void draw_transfer(Canvas& canvas, const Shape& shape, Color color) const;
    void draw_compressor(Canvas& canvas, const int* parameters) const;
    void draw_lofi(Canvas& canvas, const int* parameters) const;
    void draw_filter(Canvas& canvas, UiHost& host, const int* parameters) const;

    const unsigned effect;
};

} // namespace tarquil
