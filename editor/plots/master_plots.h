// What the master section's reverb and retrigger do.

#pragma once

#include "editor/kit/widget.h"

namespace tarquil {

// Seconds to -60 dB over frequency.
class ReverbPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "How long the reverb rings at each frequency, down to -60 dB";
    }
    [[nodiscard]] bool takes_focus() const override { return false; }
};

// Which part of the beat before is heard, over two beats.
class RetriggerPlot : public Widget {
  public:
    using Widget::Widget;
    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    std::string tooltip(UiHost& /*host*/) override {
        return "Each beat is recorded, shortened and repeated through the next\nHeight: the place "
               "in the recorded beat; falling lines play backwards";
    }
    [[nodiscard]] bool takes_focus() const override { return false; }
};

} // namespace tarquil
