// What an insert effect does to a sound: its transfer curve, its response, or a sine through it.

#pragma once

#include "editor/kit/widget.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

class MonoEffectPlot : public Widget {
  public:
    // `effect` 0 or 1
    MonoEffectPlot(const Rect& widget_area, unsigned shown)
        : Widget(widget_area), effect(shown), rows(mono_effect_rows(shown)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    // Level in against level out, from -1 to 1.
    void draw_transfer(Canvas& canvas, const ControllerBytes& bytes, Color color) const;
    void draw_compressor(Canvas& canvas, const ControllerBytes& bytes) const;
    void draw_lofi(Canvas& canvas, const ControllerBytes& bytes) const;
    void draw_filter(Canvas& canvas, UiHost& host, const ControllerBytes& bytes) const;

    const unsigned effect;
    const EffectRows rows;
};

} // namespace tarquil
