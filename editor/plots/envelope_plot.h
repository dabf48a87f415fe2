// An envelope over time with points to drag, and where the last note is on it.
//
// Left of the line "key up" time counts from the key's press, right of it from its release.

#pragma once

#include "editor/kit/widget.h"
#include "editor/plots/envelope_axis.h"
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
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;
    [[nodiscard]] std::vector<unsigned> controllers() const override;

  private:
    enum Node : int { NO_NODE = -1, ATTACK, DECAY, RELEASE };

    struct Axes {
        EnvelopeAxis held;
        EnvelopeAxis released;
    };

    [[nodiscard]] Axes axes(UiHost& host) const;
    [[nodiscard]] Rect curve_area() const;
    [[nodiscard]] double seconds(const ControllerBytes& bytes, unsigned number) const;
    [[nodiscard]] double height(double level) const;
    [[nodiscard]] Node node_at(UiHost& host, Point at) const;
    [[nodiscard]] Point node_point(UiHost& host, Node node) const;
    [[nodiscard]] Point playhead(UiHost& host) const;
    void draw_grid(Canvas& canvas, const Axes& shown) const;
    void draw_texts(Canvas& canvas, UiHost& host) const;
    [[nodiscard]] std::vector<Point> curve(UiHost& host) const;

    const unsigned envelope;
    const EnvelopeRows rows;
    Node hovered = NO_NODE;
    Node dragged = NO_NODE;
    // of the drag
    double longest = 0.0; // seconds of the linear axis when it began, which stays meanwhile
    double place = 0.0;
    double level_value = 0.0;
    Point last;
    Point drawn_playhead{};
};

} // namespace tarquil
