// The modulation as lines from its sources to what they move.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

class RoutingPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }
};

// The eight slots' names, in the order of their controllers.
inline constexpr const char* SLOT_NAMES[] = {
    "Oscillator 1 pitch", "Oscillator 2 pitch", "Oscillator 3 pitch", "Resonance",
    "Cutoff 1",           "Cutoff 2",           "Cutoff 3",           "Amplitude"};
inline constexpr unsigned NUM_SLOTS = 8;

} // namespace tarquil
