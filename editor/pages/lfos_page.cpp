// The page of the two LFOs.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/lfo_plot.h"
#include "editor/widgets/source_uses.h"
#include "softsynth/parameters/controller_number.h"
#include "softsynth/voices/influence.h"

namespace tarquil {

Page make_lfos_page() {
    Page page{"LFOs", {}, {}};
    for (unsigned i = 0; i < 2; i++) {
        Rect inside = add_panel(page, row_of(PAGE_AREA, i, 2), "LFO " + std::to_string(i + 1));
        page.add<LfoPlot>(inside.cut_left(660), i);
        inside.cut_left(16);
        page.add<SourceUses>(inside.cut_bottom(64), INFL_LFO1 + i);
        add_control(page, inside.cut_top(56), {CTRL_LFO1_TYPE + i, "Wave"});
        add_row(page, inside, {{CTRL_LFO1_SPEED + i, "Speed"}, {CTRL_LFO1_PHASE + i, "Phase"}});
    }
    return page;
}

} // namespace tarquil
