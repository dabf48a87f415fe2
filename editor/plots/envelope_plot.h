// An envelope with points to drag: attack; decay and sustain; release.

#pragma once

#include "editor/kit/dragged_value.h"
#include "editor/kit/widget.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

class EnvelopePlot : public Widget {
  public:
    // `envelope` 0..2
    EnvelopePlot(const Rect& widget_area, unsigned shown)
        : Widget(widget_area), envelope(shown), rows(envelope_rows(shown)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void hover(UiHost& host, Point at) override;
    std::string tooltip(UiHost& host) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] std::vector<unsigned> controllers() const override;

  private:
    enum Node : int { NO_NODE = -1, ATTACK, DECAY, RELEASE };

    [[nodiscard]] Node node_at(const ControllerBytes& bytes, Point at) const;
    [[nodiscard]] Point node_point(const ControllerBytes& bytes, Node node) const;

    const unsigned envelope;
    const EnvelopeRows rows;
    Node hovered = NO_NODE;
    Node dragged = NO_NODE;
    // of the drag
    DraggedValue time_value;
    double level_value = 0.0;
    Point last;
};

} // namespace tarquil
