// The stereo effect over time: the echoes of a click, or the sweep of the delay.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class StereoEffectPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
};
// The same of the master section's delay.
class MasterDelayPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
};

} // namespace tarquil
