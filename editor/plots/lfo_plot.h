// An LFO over the first seconds of a note.

#pragma once

#include "editor/kit/widget.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

class LfoPlot : public Widget {
  public:
    // `lfo` 0 or 1
    LfoPlot(const Rect& widget_area, unsigned shown)
        : Widget(widget_area), lfo(shown), rows(lfo_rows(shown)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }

  private:
    void compute(EditorSynth& synth, const ControllerBytes& bytes, double seconds);

    const unsigned lfo;
    const LfoRows rows;
    std::vector<int> computed_from;
    std::vector<float> samples;
};

} // namespace tarquil
