// The pages of the channel's equaliser, and of the master section but its compressor.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/equaliser_plot.h"
#include "editor/plots/filter_plot.h"
#include "editor/plots/stereo_effect_plot.h"
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
    const Rect aux = rest.cut_bottom(122);
    rest.cut_bottom(GAP);
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
    Rect row = aux;
    Rect reverb = add_panel(page, row.cut_left(320), "Reverb");
    add_row(page, reverb,
            {{CTRL_REVERB_ROOMSIZE, "Room size"},
             {CTRL_REVERB_DAMP, "Damping"},
             {CTRL_REVERB_WIDTH, "Width"},
             {CTRL_REVERB_WET, "Wet"}});
    row.cut_left(GAP);
    Rect delay = add_panel(page, row.cut_left(440), "Delay");
    page.add<MasterDelayPlot>(delay.cut_left(120));
    delay.cut_left(6);
    add_row(page, delay,
            {{CTRL_DELAY_LEFT_TIME, "Left time"},
             {CTRL_DELAY_RIGHT_TIME, "Right time"},
             {CTRL_DELAY_FEEDBACK, "Feedback"},
             {CTRL_AUX_CUTOFF, "Aux cutoff"}});
    row.cut_left(GAP);
    Rect retrigger = add_panel(page, row, "Retrigger");
    add_row(page, retrigger,
            {{CTRL_RETRIGGER_BPM, "Tempo"},
             {CTRL_RETRIGGER_SPEEDUP, "Speed-up"},
             {CTRL_RETRIGGER_WET_LEVEL, "Wet"}});
    return page;
}

} // namespace tarquil
