// The page of the stereo effect and the channel's way out.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/stereo_effect_plot.h"
#include "editor/widgets/choice_box.h"
#include "editor/widgets/pair_slider.h"
#include "editor/widgets/slider.h"
#include "softsynth/parameters/controller_number.h"

namespace tarquil {

Page make_output_page() {
    Page page{"Output", {}, {}};
    Rect rest = PAGE_AREA;
    Rect right = rest.cut_right(392);
    rest.cut_right(GAP);
    Rect effect = add_panel(page, rest, "Stereo effect");
    page.add<ChoiceBox>(effect.cut_top(28), CTRL_CHANFX2_TYPE, "");
    effect.cut_top(10);
    const Rect knobs = effect.cut_bottom(96);
    effect.cut_bottom(4);
    page.add<StereoEffectPlot>(effect);
    add_row(page, knobs,
            {{CTRL_CHANFX2_PARAM1, "Parameter 1"},
             {CTRL_CHANFX2_PARAM2, "Parameter 2"},
             {CTRL_CHANFX2_PARAM3, "Parameter 3"},
             {CTRL_CHANFX2_PARAM4, "Parameter 4"},
             {CTRL_CHANFX2_PARAM5, "Parameter 5"},
             {CTRL_CHANFX2_WET, "Wet"}});

    Rect out = add_panel(page, right.cut_top(222), "Channel output");
    unsigned row = 0;
    for (const ControlSpec& control :
         {ControlSpec{CTRL_MAIN_VOLUME, "Volume"}, ControlSpec{CTRL_PANNING, "Panning"},
          ControlSpec{CTRL_AUX1_LEVEL, "Reverb send"}, ControlSpec{CTRL_AUX2_LEVEL, "Delay send"}})
        page.add<Slider>(row_of(out, row++, 4, 4), control.number, control.label);
    right.cut_top(GAP);
    const Rect playing = add_panel(page, right.cut_top(124), "Playing");
    page.add<Slider>(row_of(playing, 0, 2, 4), CTRL_CHAN_MAX_VOICES, "Voice limit");
    page.add<PairSlider>(row_of(playing, 1, 2, 4), BEND_PAIR, "Pitch bend");
    right.cut_top(GAP);
    Rect speech = add_panel(page, right, "Speech (stored with the sound, not heard)");
    row = 0;
    for (const ControlSpec& control :
         {ControlSpec{CTRL_LPC_SELECT, "LPC select"}, ControlSpec{CTRL_LPC_SPEED, "LPC speed"}})
        page.add<Slider>(row_of(speech, row++, 2, 4), control.number, control.label);
    return page;
}

} // namespace tarquil
