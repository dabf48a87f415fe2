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
    std::string tooltip(UiHost& /*host*/) override {
        return "The wave from the note's start on; the dot: where the last note of this program is";
    }
    [[nodiscard]] bool takes_focus() const override { return false; }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override;

  private:
    // As it swings now, with the host's tempo where it follows that.
    [[nodiscard]] double hertz(UiHost& host) const;
    // Seconds that are shown.
    [[nodiscard]] double shown_seconds(UiHost& host) const;
    // NOWHERE while no note sounds or the LFO moves nothing.
    [[nodiscard]] Point dot(UiHost& host) const;

    void compute(EditorSynth& synth, const ControllerBytes& bytes, double cycles);

    const unsigned lfo;
    const LfoRows rows;
    std::vector<int> computed_from;
    double computed_cycles = 0.0;
    std::vector<float> samples;
    Point drawn_dot{};
};

} // namespace tarquil
