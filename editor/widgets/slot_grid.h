// The bank's 128 slots: click selects, a double click gives one to the selected channel, dragging
// swaps two of them.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class SlotGrid : public Widget {
  public:
    using Widget::Widget;

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void hover(UiHost& host, Point at) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& host) override;
    Spoken spoken(UiHost& host) override;

  private:
    [[nodiscard]] Rect slot_area(unsigned slot) const;
    [[nodiscard]] int slot_at(Point at) const;

    int hovered = NO_SLOT;
    int target = NO_SLOT; // under a slot that is dragged

    static constexpr int NO_SLOT = -1;
};

} // namespace tarquil
