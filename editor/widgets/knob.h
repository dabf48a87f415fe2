// A knob: name, dial and value below each other.

#pragma once

#include "editor/widgets/control_widget.h"

namespace tarquil {

class Knob : public ControlWidget {
  public:
    using ControlWidget::ControlWidget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;

    [[nodiscard]] bool shows_meters() const override;
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    // The ring that modulation moves the value along, and where the last note's is on it.
    void draw_modulation(Canvas& canvas, UiHost& host);
    [[nodiscard]] Point modulation_dot(UiHost& host) const;
    [[nodiscard]] Point dial_center() const;
    [[nodiscard]] double dial_radius() const;

    void draw_dial(Canvas& canvas, int value, Color color, bool is_hovered) const;

    Point drawn_dot{};
};

// True where the middle of the range means none: the value is drawn from there.
bool is_bipolar(unsigned number);

} // namespace tarquil
