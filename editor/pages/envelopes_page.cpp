// The page of the three envelopes.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/envelope_plot.h"
#include "softsynth/parameters/controller_number.h"

namespace tarquil {

Page make_envelopes_page() {
    static constexpr const char* TITLES[] = {"Envelope 1: amplitude", "Envelope 2", "Envelope 3"};
    Page page{"Envelopes", {}, {}};
    for (unsigned i = 0; i < 3; i++) {
        Rect inside = add_panel(page, row_of(PAGE_AREA, i, 3), TITLES[i]);
        page.add<EnvelopePlot>(inside.cut_left(620), i);
        inside.cut_left(12);
        add_row(page, inside,
                {{CTRL_ENV1_ATTACK + i, "Attack"},
                 {CTRL_ENV1_DECAY + i, "Decay"},
                 {CTRL_ENV1_SUSTAIN + i, "Sustain"},
                 {CTRL_ENV1_RELEASE + i, "Release"}});
    }
    return page;
}

} // namespace tarquil
