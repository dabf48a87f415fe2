// The page of the three envelopes.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/envelope_plot.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

Page make_envelopes_page() {
    static constexpr const char* TITLES[] = {"Envelope 1: amplitude", "Envelope 2", "Envelope 3"};
    Page page{"Envelopes", {}, {}};
    for (unsigned i = 0; i < NUM_ENVELOPES; i++) {
        Rect inside = add_panel(page, row_of(PAGE_AREA, i, NUM_ENVELOPES), TITLES[i]);
        page.add<EnvelopePlot>(inside.cut_left(620), i);
        inside.cut_left(12);
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
