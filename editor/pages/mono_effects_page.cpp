// The page of the two insert effects.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/mono_effect_plot.h"
#include "editor/widgets/choice_box.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

Page make_mono_effects_page() {
    Page page{"Mono effects", {}, {}};
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        const EffectRows rows = mono_effect_rows(i);
        Rect inside = add_panel(page, column_of(PAGE_AREA, i, NUM_MONO_EFFECTS),
                                "Mono effect " + std::to_string(i + 1));
        page.add<ChoiceBox>(inside.cut_top(28), rows.type, "");
        inside.cut_top(10);
        const Rect knobs = inside.cut_bottom(96);
        inside.cut_bottom(4);
        page.add<MonoEffectPlot>(inside, i);
        add_row(page, knobs,
                {{rows.parameter(0), "Parameter 1"},
                 {rows.parameter(1), "Parameter 2"},
                 {rows.parameter(2), "Parameter 3"},
                 {rows.parameter(3), "Parameter 4"},
                 {rows.parameter(4), "Parameter 5"}});
    }
    return page;
}

} // namespace tarquil
