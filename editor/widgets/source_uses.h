// What a source of modulation moves, in words.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class SourceUses : public Widget {
  public:
    // `shown` is an Influence.
    SourceUses(const Rect& widget_area, unsigned shown) : Widget(widget_area), source(shown) {}
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    const unsigned source;
};

} // namespace tarquil
