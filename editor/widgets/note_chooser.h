// The note at which waves and key-following filters are drawn: "C4", up and down.

#pragma once

#include "editor/kit/dragged_value.h"
#include "editor/kit/widget.h"

namespace tarquil {

class NoteChooser : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void wheel(UiHost& host, const Pointer& pointer, double steps) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "The note that is drawn; it does not change the sound\nDrag, or use the wheel";
    }
    Spoken spoken(UiHost& host) override;

  private:
    double dragged_note = 0.0;
    WheelSteps wheel_steps;
    Point last;
};

// "C4" for 60.
std::string note_name(int note);

} // namespace tarquil
