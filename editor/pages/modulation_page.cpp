// The page of the eight modulation slots.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/widgets/amount_text.h"
#include "editor/widgets/choice_box.h"
#include "editor/widgets/routing_plot.h"
#include "editor/widgets/slider.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

Page make_modulation_page() {
    Page page{"Modulation", {}, {}};
    Rect rest = PAGE_AREA;
    page.add<RoutingPlot>(add_panel(page, rest.cut_top(232), "Routing"));
    rest.cut_top(GAP);
    Rect table = add_panel(page, rest, "Modulation");

    constexpr double NAME_WIDTH = 118;
    constexpr double SOURCE_WIDTH = 104;
    constexpr double SUM_WIDTH = 66;
    const double slider_width = (table.w - NAME_WIDTH - SOURCE_WIDTH - SUM_WIDTH - 40) / 2;
    const TextStyle heading{theme::SMALL, theme::TEXT_MUTED};
    Rect head = table.cut_top(20);
    head.cut_left(NAME_WIDTH);
    page.add<Caption>(head.cut_left(SOURCE_WIDTH + 16), "Source", heading);
    page.add<Caption>(head.cut_left(slider_width + 12), "Amount", heading);
    page.add<Caption>(head.cut_left(slider_width), "Fine amount", heading);
    page.add<Caption>(head, "Sum", TextStyle{theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const ModulationRows rows = modulation_rows(slot);
        Rect row = row_of(table, slot, NUM_MODULATION_SLOTS, 0);
        page.add<Caption>(row.cut_left(NAME_WIDTH), MODULATION_TARGET_NAMES[slot],
                          TextStyle{theme::NORMAL, theme::TEXT});
        const Rect source = row.cut_left(SOURCE_WIDTH);
        page.add<ChoiceBox>(Rect{source.x, row.center().y - 13, source.w, 26}, rows.source, "");
        row.cut_left(16);
        const Rect amount = row.cut_left(slider_width);
        page.add<Slider>(Rect{amount.x, row.center().y - 13, amount.w, 26}, rows.amount, "");
        row.cut_left(12);
        const Rect fine = row.cut_left(slider_width);
        page.add<Slider>(Rect{fine.x, row.center().y - 13, fine.w, 26}, rows.fine_amount, "");
        row.cut_left(4);
        page.add<AmountText>(row, slot);
    }
    return page;
}

} // namespace tarquil
