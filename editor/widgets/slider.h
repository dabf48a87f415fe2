// A horizontal slider with its value behind it.

#pragma once

#include "editor/widgets/control_widget.h"

namespace tarquil {

class Slider : public ControlWidget {
  public:
    // An empty label leaves its room to the slot.
    using ControlWidget::ControlWidget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;

  protected:
    [[nodiscard]] double steps_per_way() const override { return 127.0 / slot_area().w; }
    [[nodiscard]] double drag_way(Point from, Point to) const override { return to.x - from.x; }
    [[nodiscard]] Rect entry_area() const override;

  private:
    [[nodiscard]] Rect slot_area() const;
    [[nodiscard]] Rect value_area() const;
};

} // namespace tarquil
