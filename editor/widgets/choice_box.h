// A controller that picks one of a list: shows the choice, opens the list.

#pragma once

#include "editor/widgets/control_widget.h"

namespace tarquil {

class ChoiceBox : public ControlWidget {
  public:
    // The label stands above the box; without one the box fills the area.
    using ControlWidget::ControlWidget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    Spoken spoken(UiHost& host) override;

  private:
    [[nodiscard]] Rect box_area() const;
};

// The track of a switch, 30 wide and 16 high.
void draw_switch(Canvas& canvas, const Rect& track, bool is_on, bool is_used, bool is_hovered);
inline constexpr double SWITCH_WIDTH = 30.0;
inline constexpr double SWITCH_HEIGHT = 16.0;

// A controller that is on or off.
class SwitchBox : public ControlWidget {
  public:
    using ControlWidget::ControlWidget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    Spoken spoken(UiHost& host) override;

  private:
    void toggle(UiHost& host);
};

} // namespace tarquil
