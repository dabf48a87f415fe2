// A line of text that stays.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class Caption : public Widget {
  public:
    Caption(const Rect& widget_area, std::string shown, TextStyle look)
        : Widget(widget_area), text(std::move(shown)), style(look) {}
    void draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& /*state*/) override {
        canvas.text(area, text, style);
    }
    Spoken spoken(UiHost& /*host*/) override { return {SpokenRole::LABEL, text}; }
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    const std::string text;
    const TextStyle style;
};

} // namespace tarquil
