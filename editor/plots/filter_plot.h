// The response of the voice filter.

#pragma once

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

  private:
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
