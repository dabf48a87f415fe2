// The page of the two insert effects.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/mono_effect_plot.h"
#include "editor/widgets/choice_box.h"
#include "softsynth/parameters/controller_number.h"

namespace tarquil {

Page make_mono_effects_page() {
    Page page{"Mono effects", {}, {}};
    for (unsigned i = 0; i < 2; i++) {
        const unsigned type = i == 0 ? CTRL_CHANFX1_TYPE : CTRL_CHANFX1B_TYPE;
        const unsigned first = i == 0 ? CTRL_CHANFX1_PARAM1 : CTRL_CHANFX1B_PARAM1;
        Rect inside =
            add_panel(page, column_of(PAGE_AREA, i, 2), "MONO EFFECT " + std::to_string(i + 1));
        page.add<ChoiceBox>(inside.cut_top(28), type, "");
        inside.cut_top(10);
        const Rect knobs = inside.cut_bottom(96);
        inside.cut_bottom(4);
        page.add<MonoEffectPlot>(inside, i);
        add_row(page, knobs,
                {{first, "Parameter 1"},
                 {first + 1, "Parameter 2"},
                 {first + 2, "Parameter 3"},
                 {first + 3, "Parameter 4"},
                 {first + 4, "Parameter 5"}});
    }
    return page;
}

} // namespace tarquil
