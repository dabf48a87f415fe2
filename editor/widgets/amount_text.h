// The whole amount of a modulation slot, or that it multiplies.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class AmountText : public Widget {
  public:
    // `shown` 0..7
    AmountText(const Rect& widget_area, unsigned shown) : Widget(widget_area), slot(shown) {}
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "Amount and fine amount together\nAt its top the amount multiplies by the source "
               "instead";
    }
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    const unsigned slot;
};

// A line of text that stays.
class Caption : public Widget {
  public:
    Caption(const Rect& widget_area, std::string shown, TextStyle look)
        : Widget(widget_area), text(std::move(shown)), style(look) {}
    void draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& /*state*/) override {
        canvas.text(area, text, style);
    }
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    const std::string text;
    const TextStyle style;
};

} // namespace tarquil
