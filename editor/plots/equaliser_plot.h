// The combined response of a row of equaliser filters, each with a node to drag.

#pragma once

#include "editor/kit/dragged_value.h"
#include "editor/kit/widget.h"
#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

class EqualiserPlot : public Widget {
  public:
    // `first_type` is the type controller of the first of `count` filters; `first_response` where
    // they ask the response worker.
    EqualiserPlot(const Rect& widget_area, unsigned first_type, unsigned count,
                  unsigned first_response);

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void hover(UiHost& host, Point at) override;
    void wheel(UiHost& host, const Pointer& pointer, double steps) override;
    std::string tooltip(UiHost& host) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] std::vector<unsigned> controllers() const override;

  private:
    [[nodiscard]] FilterRows rows_of(int filter) const {
        return filter_rows(first + NUM_FILTER_ROWS * unsigned(filter));
    }
    [[nodiscard]] Point node_point(const ControllerBytes& bytes, int filter) const;
    [[nodiscard]] int node_at(const ControllerBytes& bytes, Point at) const;

    const unsigned first;
    const int num_filters;
    const unsigned responses;
    const PlotFrame frame;
    int hovered = NO_NODE;
    int dragged = NO_NODE;
    // of the drag
    DraggedValue cutoff;
    DraggedValue heights;
    WheelSteps wheel_steps;
    Point last;

    static constexpr int NO_NODE = -1;
};

} // namespace tarquil
