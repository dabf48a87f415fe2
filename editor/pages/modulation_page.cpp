// The page of the eight modulation slots.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/widgets/amount_text.h"
#include "editor/widgets/choice_box.h"
#include "editor/widgets/multiply_switch.h"
#include "editor/widgets/pair_slider.h"
#include "editor/widgets/routing_plot.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

Page make_modulation_page() {
    Page page{"Modulation", {}, {}};
    Rect rest = PAGE_AREA;
    page.add<RoutingPlot>(add_panel(page, rest.cut_top(232), "Routing"));
    rest.cut_top(GAP);
    Rect table = add_panel(page, rest, "Modulation");

    constexpr double NAME_WIDTH = 150;
    constexpr double SOURCE_WIDTH = 132;
    constexpr double MULTIPLY_WIDTH = 70;
    constexpr double SPACE = 24;
    const TextStyle heading{theme::SMALL, theme::TEXT_MUTED};
    Rect head = table.cut_top(20);
    head.cut_left(NAME_WIDTH);
    page.add<Caption>(head.cut_left(SOURCE_WIDTH + SPACE), "Source", heading);
    page.add<Caption>(head.cut_left(MULTIPLY_WIDTH + SPACE), "Multiply", heading);
    page.add<Caption>(head, "Amount", heading);
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        Rect row = row_of(table, slot, NUM_MODULATION_SLOTS, 0);
        const double top = row.center().y - 13;
        page.add<Caption>(row.cut_left(NAME_WIDTH), MODULATION_TARGET_NAMES[slot],
                          TextStyle{theme::NORMAL, theme::TEXT});
        page.add<ChoiceBox>(Rect{row.x, top, SOURCE_WIDTH, 26}, modulation_rows(slot).source, "");
        row.cut_left(SOURCE_WIDTH + SPACE);
        page.add<MultiplySwitch>(Rect{row.x, top, 48, 26}, slot);
        row.cut_left(MULTIPLY_WIDTH + SPACE);
        page.add<PairSlider>(Rect{row.x, top, row.w, 26}, amount_pair(slot), "");
    }
    return page;
}

} // namespace tarquil
