// A knob: name, dial and value below each other.

#pragma once

#include "editor/widgets/control_widget.h"

namespace tarquil {

class Knob : public ControlWidget {
  public:
    using ControlWidget::ControlWidget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;

  private:
    void draw_dial(Canvas& canvas, int value, Color color, bool is_hovered) const;
};

// True where the middle of the range means none: the value is drawn from there.
bool is_bipolar(unsigned number);

} // namespace tarquil
