// The page of the voice filter and what moves it.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/filter_plot.h"
#include "editor/widgets/amount_text.h"
#include "editor/widgets/choice_box.h"
#include "editor/widgets/multiply_switch.h"
#include "editor/widgets/pair_slider.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

Page make_filter_page() {
    Page page{"Filter", {}, {}};
    Rect rest = PAGE_AREA;
    Rect upper = add_panel(page, rest.cut_top(362), "Voice filter");
    rest.cut_top(GAP);
    Rect controls = upper.cut_right(190);
    upper.cut_right(16);
    page.add<FilterPlot>(upper);
    add_control(page, controls.cut_top(54), {CTRL_FILTER1_TYPE, "Type"});
    add_control(page, controls.cut_top(54), {CTRL_FILTER1_DEPTH, "Depth"});
    controls.cut_top(6);
    add_row(page, controls.cut_top(96),
            {{CTRL_FILTER1_CUTOFF, "Cutoff"}, {CTRL_FILTER1_RESONANCE, "Resonance"}});
    controls.cut_top(6);
    add_control(page, controls.cut_top(36), {CTRL_FILTER1_KEY_FOLLOW, "Key follow"});
    add_note_chooser(page, controls.cut_top(36).inset(20, 5));

    Rect lower = add_panel(page, rest, "Moved by");
    constexpr unsigned NUM_FILTER_SLOTS = 1 + NUM_CUTOFF_SLOTS;
    for (unsigned i = 0; i < NUM_FILTER_SLOTS; i++) {
        const unsigned slot = RESONANCE_SLOT + i;
        Rect column = column_of(lower, i, NUM_FILTER_SLOTS, 20);
        page.add<Caption>(column.cut_top(20), MODULATION_TARGET_NAMES[slot],
                          TextStyle{theme::NORMAL, theme::TEXT});
        column.cut_top(4);
        page.add<ChoiceBox>(column.cut_top(28), modulation_rows(slot).source, "");
        column.cut_top(6);
        page.add<PairSlider>(column.cut_top(26), amount_pair(slot), "");
        Rect multiply = column.cut_top(26);
        page.add<MultiplySwitch>(multiply.cut_left(40), slot);
        page.add<Caption>(multiply, "Multiply", TextStyle{theme::SMALL, theme::TEXT_MUTED});
    }
    return page;
}

} // namespace tarquil
