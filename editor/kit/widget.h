// A part of a page: draws itself and takes the pointer and keys.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "editor/kit/canvas.h"
#include "editor/kit/events.h"
#include "editor/kit/spoken.h"
#include "editor/kit/ui_host.h"

namespace tarquil {

struct WidgetState {
    bool is_hovered = false;
    bool is_pressed = false;
    bool is_focused = false;
};

class Widget {
  public:
    explicit Widget(const Rect& widget_area) : area(widget_area) {}
    Widget(const Widget&) = delete;
    Widget& operator=(const Widget&) = delete;
    virtual ~Widget() = default;

    virtual void draw(Canvas& canvas, UiHost& host, const WidgetState& state) = 0;

    // True: drags follow until the button is released.
    virtual bool press(UiHost& /*host*/, const Pointer& /*pointer*/) { return false; }
    virtual void drag(UiHost& /*host*/, const Pointer& /*pointer*/) {}
    virtual void release(UiHost& /*host*/) {}
    // The pointer moves over it with no button pressed.
    virtual void hover(UiHost& /*host*/, Point /*at*/) {}
    virtual void wheel(UiHost& /*host*/, const Pointer& /*pointer*/, double /*steps*/) {}
    // False for a key that means nothing here.
    virtual bool press_key(UiHost& /*host*/, const KeyEvent& /*key*/) { return false; }

    // Its page is on the screen no more.
    virtual void hide(UiHost& /*host*/) {}
    // The channel that takes what is dropped here.
    [[nodiscard]] virtual std::optional<unsigned> dropped_on() const { return std::nullopt; }

    // Empty for none.
    virtual std::string tooltip(UiHost& /*host*/) { return ""; }
    // What a screen reader is told; the view adds its place, its focus and its identity.
    virtual Spoken spoken(UiHost& host) { return spoken_of_tooltip(tooltip(host)); }
    [[nodiscard]] virtual bool takes_focus() const { return true; }
    // Looks different when nothing but the meters has changed, and within its area only.
    [[nodiscard]] virtual bool shows_meters() const { return false; }
    // Where it does, or more, since it last drew.
    virtual std::vector<Rect> moved_areas(UiHost& /*host*/) { return {area}; }
    // What is played is read while it is on the page.
    [[nodiscard]] virtual bool shows_output() const { return false; }
    // The controllers that can be set here.
    [[nodiscard]] virtual std::vector<unsigned> controllers() const { return {}; }

    [[nodiscard]] const Rect& get_area() const { return area; }

  protected:
    const Rect area;
};

} // namespace tarquil
