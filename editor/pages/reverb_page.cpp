// The page of the master section's reverb, delay and retrigger.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/master_plots.h"
#include "editor/plots/stereo_effect_plot.h"
#include "softsynth/parameters/controller_number.h"

namespace tarquil {

Page make_reverb_page() {
    constexpr double KNOBS_HEIGHT = 80.0;
    Page page{"Reverb", {}, {}};
    Rect rest = PAGE_AREA;
    const Rect upper = rest.cut_top((rest.h - GAP) * 0.55);
    rest.cut_top(GAP);
    Rect reverb = add_panel(page, column_of(upper, 0, 2), "Reverb");
    add_row(page, reverb.cut_bottom(KNOBS_HEIGHT),
            {{CTRL_REVERB_ROOMSIZE, "Room size"},
             {CTRL_REVERB_DAMP, "Damping"},
             {CTRL_REVERB_WIDTH, "Width"},
             {CTRL_REVERB_WET, "Wet"}});
    reverb.cut_bottom(4);
    page.add<ReverbPlot>(reverb);
    Rect delay = add_panel(page, column_of(upper, 1, 2), "Delay");
    add_row(page, delay.cut_bottom(KNOBS_HEIGHT),
            {{CTRL_DELAY_LEFT_TIME, "Left time"},
             {CTRL_DELAY_RIGHT_TIME, "Right time"},
             {CTRL_DELAY_FEEDBACK, "Feedback"},
             {CTRL_AUX_CUTOFF, "Aux cutoff"}});
    delay.cut_bottom(4);
    page.add<MasterDelayPlot>(delay);
    Rect retrigger = add_panel(page, rest, "Retrigger");
    const Rect knobs = retrigger.cut_right(300);
    retrigger.cut_right(12);
    add_row(page, knobs,
            {{CTRL_RETRIGGER_BPM, "Tempo"},
             {CTRL_RETRIGGER_SPEEDUP, "Speed-up"},
             {CTRL_RETRIGGER_WET_LEVEL, "Wet"}});
    page.add<RetriggerPlot>(retrigger);
    return page;
}

} // namespace tarquil
