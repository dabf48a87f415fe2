// The page of the two LFOs.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/lfo_plot.h"
#include "editor/widgets/source_uses.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

Page make_lfos_page() {
    Page page{"LFOs", {}, {}};
    for (unsigned i = 0; i < NUM_LFOS; i++) {
        Rect inside =
            add_panel(page, row_of(PAGE_AREA, i, NUM_LFOS), "LFO " + std::to_string(i + 1));
        page.add<LfoPlot>(inside.cut_left(660), i);
        inside.cut_left(16);
        page.add<SourceUses>(inside.cut_bottom(64), INFL_LFO1 + i);
        const LfoRows rows = lfo_rows(i);
        add_control(page, inside.cut_top(56), {rows.type, "Wave"});
        add_row(page, inside, {{rows.speed, "Speed"}, {rows.phase, "Phase"}});
    }
    return page;
}

} // namespace tarquil
