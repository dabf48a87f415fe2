// Whether a slot of modulation multiplies its target by its source, instead of adding to it.

#pragma once

#include "editor/widgets/control_widget.h"

namespace tarquil {

class MultiplySwitch : public Widget {
  public:
    // `shown_slot` 0..7
    MultiplySwitch(const Rect& widget_area, unsigned shown_slot)
        : Widget(widget_area), slot(shown_slot) {}
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& host) override;
    Spoken spoken(UiHost& host) override;

  private:
    void toggle(UiHost& host);

    const unsigned slot;
    // The amount before it was switched on here, of that program.
    unsigned program = 0;
    int amount = NO_AMOUNT;

    static constexpr int NO_AMOUNT = -1;
};

} // namespace tarquil
