// The page of the three envelopes.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/envelope_plot.h"
#include "editor/widgets/button.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

void add_time_button(Page& page, const Rect& area) {
    page.add<Button>(
        area,
        [](UiHost& host) {
            return Button::Look{"Logarithmic time", true,
                                host.get_view_state().is_time_logarithmic};
        },
        [](UiHost& host) {
            bool& is_logarithmic = host.get_view_state().is_time_logarithmic;
            is_logarithmic = !is_logarithmic;
        },
        "Lit: 1 ms and 10 s both can be seen, at the same places in all plots\nElse: equal times "
        "are equally wide");
}

} // namespace

Page make_envelopes_page() {
    static constexpr const char* TITLES[] = {"Envelope 1: amplitude", "Envelope 2", "Envelope 3"};
    Page page{"Envelopes", {}, {}};
    for (unsigned i = 0; i < NUM_ENVELOPES; i++) {
        Rect inside = add_panel(page, row_of(PAGE_AREA, i, NUM_ENVELOPES), TITLES[i]);
        page.add<EnvelopePlot>(inside.cut_left(620), i);
        inside.cut_left(12);
        if (i == 0)
            add_time_button(page, {inside.right() - 160, inside.y - 16, 130, 24});
        const EnvelopeRows rows = envelope_rows(i);
        add_row(page, inside,
                {{rows.attack, "Attack"},
                 {rows.decay, "Decay"},
                 {rows.sustain, "Sustain"},
                 {rows.release, "Release"}});
    }
    return page;
}

} // namespace tarquil
