// What all widgets for one controller share: dragging, the wheel, keys, typed values, the menu.

#pragma once

#include "editor/kit/dragged_value.h"
#include "editor/kit/widget.h"

namespace tarquil {

struct MenuItem;

class ControlWidget : public Widget {
  public:
    // `control_label` is the name on the page.
    ControlWidget(const Rect& widget_area, unsigned controller, const char* control_label)
        : Widget(widget_area), number(controller), label(control_label) {}

    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    void wheel(UiHost& host, const Pointer& pointer, double steps) override;
    bool press_key(UiHost& host, const KeyEvent& key) override;
    std::string tooltip(UiHost& host) override;
    Spoken spoken(UiHost& host) override;
    [[nodiscard]] std::vector<unsigned> controllers() const override { return {number}; }

  protected:
    // Values per unit of the pointer's way.
    [[nodiscard]] virtual double steps_per_way() const { return 127.0 / 180.0; }
    // How far the pointer has gone, from what it was before.
    [[nodiscard]] virtual double drag_way(Point from, Point to) const {
        return (to.x - from.x) * 0.5 - (to.y - from.y);
    }
    // Where a typed value appears.
    [[nodiscard]] virtual Rect entry_area() const;

    // What is shown and changed; here the controller alone.
    virtual void step(UiHost& host, int steps); // of a burst that is one step to undo
    virtual void reset(EditorModel& model);
    [[nodiscard]] virtual std::string text_now(const EditorModel& model) const;
    [[nodiscard]] virtual std::string default_text(const EditorModel& model) const;
    // Empty when it was a value; else what would be one.
    virtual std::string take_text(EditorModel& model, const std::string& text);
    // 0..1 of its range, to be copied to others.
    [[nodiscard]] virtual double place(const EditorModel& model) const;
    virtual void set_place(EditorModel& model, double part);

    // A small note, `at` its head, where the control is heard from the next note on only.
    void draw_note_mark(Canvas& canvas, Point at) const;

    void open_entry(UiHost& host);
    void open_choices(UiHost& host);
    void open_context_menu(UiHost& host, Point at);
    void add_learning(UiHost& host, std::vector<MenuItem>& items) const;

    const unsigned number;
    const char* const label;

  private:
    DraggedValue dragged_value;
    WheelSteps wheel_steps;
    Point last;
};

// Puts a controller back to its default, as one step.
void reset_control(EditorModel& model, unsigned number);

// A value as it is shown now.
std::string shown_text(const EditorModel& model, unsigned number, int byte);
// The tooltip's last lines, each behind a line break: why it has no effect, when it is heard, what
// moves it.  Empty when there is nothing to say.
std::string control_remarks(const EditorModel& model, unsigned number);
// The lines of a control's tooltip: name and value; what it is for; why it has no effect; when it
// is heard; the host's name of it.
std::string control_tooltip(EditorModel& model, unsigned number);

} // namespace tarquil
