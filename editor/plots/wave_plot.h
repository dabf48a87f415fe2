// The waveform of one oscillator group as it will sound, with the fan of its copies; or of the mix.

#pragma once

#include <vector>

#include "editor/kit/widget.h"

namespace tarquil {

class WavePlot : public Widget {
  public:
    // `oscillator` 0..2, or MIX.
    WavePlot(const Rect& widget_area, unsigned shown) : Widget(widget_area), oscillator(shown) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override;
    [[nodiscard]] bool takes_focus() const override { return false; }

    static constexpr unsigned MIX = 3;

  private:
    void compute(EditorSynth& synth, const ControllerBytes& bytes, int note, double num_periods);
    void draw_copies(Canvas& canvas, const ControllerBytes& bytes, const Rect& strip) const;

    const unsigned oscillator;
    // What the samples were computed from.
    ControllerBytes computed_bytes{};
    int computed_note = -1;
    std::vector<float> samples;
};

} // namespace tarquil
