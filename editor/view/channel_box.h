// A channel's program: a click selects it for editing, another one opens the list of programs; the
// light shows notes.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class ChannelBox : public Widget {
  public:
    // `shown_light` is how bright the light is, 0..1.
    ChannelBox(const Rect& widget_area, unsigned shown, const double* shown_light)
        : Widget(widget_area), channel(shown), light(shown_light) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& host) override;
    Spoken spoken(UiHost& host) override;
    [[nodiscard]] std::optional<unsigned> dropped_on() const override { return channel; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    void choose(UiHost& host);
    void open(UiHost& host);
    [[nodiscard]] Rect light_area() const;

    const unsigned channel;
    const double* const light;
    double drawn_light = 0.0;
};

} // namespace tarquil
