// A horizontal slider with its value behind it.

#pragma once

#include "editor/widgets/control_widget.h"

namespace tarquil {

// From one place to the handle's; dim when it is not used.
struct SliderLook {
    double from = 0.0; // x
    double handle = 0.0;
    bool has_middle = false; // `from` is one
    bool is_used = true;
    bool is_bright = false;
};
void draw_slider(Canvas& canvas, const Rect& slot, const SliderLook& look);
inline constexpr double SLIDER_HANDLE_RADIUS = 6.0;
inline constexpr double SLIDER_SLOT_HEIGHT = 5.0;

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
