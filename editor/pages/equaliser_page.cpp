// The pages of the channel's equaliser and of the master section's.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/equaliser_plot.h"
#include "editor/plots/filter_plot.h"
#include "editor/widgets/choice_box.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

// The panel of filter `index` with its type at the top; returns the room below.
Rect add_filter(Page& page, const Rect& area, const FilterRows& rows, unsigned index) {
    Rect inside = add_panel(page, area, "");
    page.panels.back().title = std::to_string(index + 1);
    Rect box = inside.cut_top(26);
    box.cut_left(18);
    box.cut_right(20); // the panel's three dots
    page.add<ChoiceBox>(box, rows.type, "");
    return inside;
}

} // namespace

Page make_equaliser_page() {
    Page page{"Equaliser", {}, {}};
    Rect rest = PAGE_AREA;
    const Rect filters = rest.cut_bottom(134);
    rest.cut_bottom(GAP);
    page.add<EqualiserPlot>(add_panel(page, rest, "Channel equaliser"), CTRL_CHAN_FILTER1_TYPE,
                            NUM_CHANNEL_FILTERS, CHANNEL_FILTER_RESPONSE);
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++) {
        const FilterRows rows = channel_filter_rows(i);
        const Rect inside = add_filter(page, column_of(filters, i, NUM_CHANNEL_FILTERS), rows, i);
        add_row(page, inside,
                {{rows.cutoff, "Cutoff"}, {rows.resonance, "Resonance"}, {rows.gain, "Gain"}});
    }
    return page;
}

Page make_global_page() {
    Page page{"Global", {}, {}};
    Rect rest = PAGE_AREA;
    const Rect filters = rest.cut_bottom(204);
    rest.cut_bottom(GAP);
    page.add<EqualiserPlot>(add_panel(page, rest, "Global equaliser"), CTRL_GLOBAL_FILTER1_TYPE,
                            NUM_GLOBAL_FILTERS, GLOBAL_FILTER_RESPONSE);
    for (unsigned i = 0; i < NUM_GLOBAL_FILTERS; i++) {
        const FilterRows rows = global_filter_rows(i);
        Rect inside = add_filter(page, column_of(filters, i, NUM_GLOBAL_FILTERS), rows, i);
        inside.cut_top(8);
        add_row(page, inside.cut_top(74), {{rows.cutoff, "Cutoff"}, {rows.resonance, "Resonance"}});
        add_control(page, inside, {rows.gain, "Gain"});
    }
    return page;
}

} // namespace tarquil
