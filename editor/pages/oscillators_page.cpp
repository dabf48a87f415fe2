// The page of the three oscillator groups and their mix.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/wave_plot.h"
#include "editor/widgets/choice_box.h"
#include "editor/widgets/slider.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

Page make_oscillators_page() {
    Page page{"Oscillators", {}, {}};
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        Rect inside =
            add_panel(page, row_of(PAGE_AREA, i, 4), "Oscillator " + std::to_string(i + 1));
        page.add<WavePlot>(inside.cut_left(330), i);
        inside.cut_left(14);
        const OscillatorRows rows = oscillator_rows(i);
        add_control(page, inside.cut_left(116), {rows.type, "Wave"});
        inside.cut_left(8);
        add_row(page, inside,
                {{rows.coarse_tune, "Coarse"},
                 {rows.fine_tune, "Fine"},
                 {rows.copies, "Copies"},
                 {rows.spread, "Spread"},
                 {rows.random_phase, "Random phase"}});
    }
    Rect inside = add_panel(page, row_of(PAGE_AREA, 3, 4), "Mix");
    page.add<WavePlot>(inside.cut_left(330), WavePlot::MIX);
    inside.cut_left(14);
    Rect left = inside.cut_left(340);
    page.add<Slider>(left.cut_top(32), CTRL_OSC1_OSC2_MIX, "Mix 1 / 2");
    Rect below = left.cut_top(36);
    page.add<SwitchBox>(below.cut_left(180).inset(0, 4), CTRL_OSC1_OSC2_RING_MODULATOR,
                        "Ring modulation");
    add_note_chooser(page, below.inset(12, 6));
    add_row(page, inside,
            {{CTRL_OSC3_VOLUME, "Oscillator 3"}, {CTRL_PORTAMENTO_TIME, "Portamento"}});
    return page;
}

} // namespace tarquil
