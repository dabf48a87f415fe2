// The modulation as lines from its sources to what they move.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class RoutingPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
};

} // namespace tarquil
