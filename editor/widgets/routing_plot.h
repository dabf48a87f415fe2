// The modulation as lines from its sources to what they move, to be drawn by hand.

#pragma once

#include <optional>

#include "editor/kit/widget.h"

namespace tarquil {

// A source is clicked or dragged onto what it is to move; a click on a target chooses or removes
// its source.
class RoutingPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void hover(UiHost& host, Point at) override;
    std::string tooltip(UiHost& host) override;
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    [[nodiscard]] Rect source_area(unsigned source) const; // an Influence but none
    [[nodiscard]] Rect target_area(unsigned slot) const;
    [[nodiscard]] std::optional<unsigned> source_at(Point at) const;
    [[nodiscard]] std::optional<unsigned> slot_at(Point at) const;
    void draw_lines(Canvas& canvas, const ControllerBytes& bytes) const;
    void draw_chip(Canvas& canvas, const Rect& chip, const char* name, Color color,
                   bool is_lit) const;
    void connect(UiHost& host, unsigned slot);
    void open_sources(UiHost& host, unsigned slot) const;

    std::optional<unsigned> chosen; // the source to be connected
    Point pointer_at;
    bool is_dragging = false;
};

} // namespace tarquil
