// The response of the voice filter, and how the last note moves its cutoff.

#pragma once

#include <cstdint>

#include "editor/kit/dragged_value.h"
#include "editor/kit/widget.h"

namespace tarquil {

class FilterPlot : public Widget {
  public:
    using Widget::Widget;

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    // Drags cutoff and resonance.
    bool press(UiHost& host, const Pointer& pointer) override;
    void drag(UiHost& host, const Pointer& pointer) override;
    void release(UiHost& host) override;
    std::string tooltip(UiHost& host) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] std::vector<unsigned> controllers() const override;
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    // Where the cutoff of the last note is, has been at its lowest, and at its highest.
    struct Motion {
        uint32_t note = 0; // its start
        int key = -1;      // negative: there is none
        double now = 0.0;  // places
        double left = 0.0;
        double right = 0.0;
    };

    [[nodiscard]] Motion motion(UiHost& host) const;
    void draw_motion(Canvas& canvas) const;
    void draw_harmonics(Canvas& canvas, int key) const;
    [[nodiscard]] Rect harmonics_area() const;

    Motion drawn;
    // of the drag
    DraggedValue cutoff;
    DraggedValue resonance;
    Point last;
};

// Who asks the response worker.
inline constexpr unsigned VOICE_FILTER_RESPONSE = 0;
inline constexpr unsigned CHANNEL_FILTER_RESPONSE = 1; // four
inline constexpr unsigned MONO_EFFECT_RESPONSE = 5;    // two
inline constexpr unsigned GLOBAL_FILTER_RESPONSE = 7;  // six

} // namespace tarquil
