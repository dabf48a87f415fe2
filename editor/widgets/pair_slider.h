// A slider for a coarse and a fine controller that are one value.

#pragma once

#include "editor/widgets/control_widget.h"
#include "softsynth/parameters/coarse_and_fine.h"

namespace tarquil {

// The way from the middle is the value's root: small ones, which are heard most, have most room.
class PairSlider : public ControlWidget {
  public:
    // An empty label leaves its room to the slot.
    PairSlider(const Rect& widget_area, const CoarseAndFine& shown, const char* control_label)
        : ControlWidget(widget_area, shown.coarse, control_label), pair(shown) {}
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void wheel(UiHost& host, const Pointer& pointer, double steps) override;
    std::string tooltip(UiHost& host) override;
    [[nodiscard]] std::vector<unsigned> controllers() const override {
        return {pair.coarse, pair.fine};
    }

  protected:
    void step(UiHost& host, int steps) override;
    void reset(EditorModel& model) override;
    [[nodiscard]] std::string text_now(const EditorModel& model) const override;
    [[nodiscard]] std::string default_text(const EditorModel& model) const override;
    std::string take_text(EditorModel& model, const std::string& text) override;
    [[nodiscard]] double place(const EditorModel& model) const override;
    void set_place(EditorModel& model, double part) override;
    [[nodiscard]] Rect entry_area() const override;

  private:
    [[nodiscard]] Rect slot_area() const;
    [[nodiscard]] Rect value_area() const;
    [[nodiscard]] PairBytes bytes(const EditorModel& model) const;
    [[nodiscard]] bool multiplies(const EditorModel& model) const;
    [[nodiscard]] double quantity_at(double part) const;
    void set(EditorModel& model, double quantity) const;
    void turn(EditorModel& model, double parts) const;
    void turn_finely(EditorModel& model, int steps) const;
    void turn_to(EditorModel& model, double quantity) const;

    const CoarseAndFine pair;
    double dragged_place = 0.0;
    Point last_at;
    WheelSteps wheel_steps;
};

} // namespace tarquil
