// What lies over the page for a while and gets all input: menus, text fields, questions, files.

#pragma once

#include "editor/kit/canvas.h"
#include "editor/kit/events.h"
#include "editor/kit/spoken.h"

namespace tarquil {

class Overlay {
  public:
    Overlay() = default;
    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;
    virtual ~Overlay() = default;

    virtual void draw(Canvas& canvas) = 0;
    virtual void press(const Pointer& pointer) = 0;
    virtual void move(const Pointer& /*pointer*/) {}
    virtual void release() {} // of the left button
    virtual void wheel(const Pointer& /*pointer*/, double /*steps*/) {}
    virtual void press_key(const KeyEvent& key) = 0;

    // What a screen reader is told: something in it has the focus.
    virtual Spoken spoken() = 0;

    // True while it wants characters typed by the user.
    [[nodiscard]] virtual bool takes_text() const { return false; }

    // True while the keyboard along the bottom can be played beside it.
    [[nodiscard]] virtual bool leaves_keyboard() const { return false; }
    // True when it looks different after that time.
    virtual bool pass_time(double /*seconds*/) { return false; }

    [[nodiscard]] bool is_done() const { return done; }

  protected:
    // It goes away when the event that it is handling is over.
    void finish() { done = true; }

  private:
    bool done = false;
};

} // namespace tarquil
