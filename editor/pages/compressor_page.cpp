// The page of the four-band master compressor.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/compressor_plot.h"
#include "editor/widgets/button.h"
#include "softsynth/effects/multi_compressor.h"
#include "softsynth/parameters/controller_number.h"

namespace tarquil {

namespace {

constexpr unsigned BAND_STEP = CTRL_FCMPR_BAND2_THRESHOLD - CTRL_FCMPR_BAND1_THRESHOLD;

// True when every other band is muted, and this one is not.
bool is_solo(EditorSynth& synth, unsigned band) {
    for (unsigned other = 0; other < MC_N_BANDS; other++) {
        if (synth.is_band_muted(other) == (other == band))
            return false;
    }
    return true;
}

void toggle_solo(EditorSynth& synth, unsigned band) {
    const bool was_solo = is_solo(synth, band);
    for (unsigned other = 0; other < MC_N_BANDS; other++)
        synth.set_band_muted(other, !was_solo && other != band);
}

void add_mute_buttons(Page& page, const Rect& area, unsigned band) {
    page.add<Button>(
        column_of(area, 0, 2, 4),
        [band](UiHost& host) {
            return Button::Look{"Solo", true, is_solo(host.get_model().get_synth(), band),
                                theme::ACCENT_DIM};
        },
        [band](UiHost& host) { toggle_solo(host.get_model().get_synth(), band); },
        "Hear this band alone; it is not stored");
    page.add<Button>(
        column_of(area, 1, 2, 4),
        [band](UiHost& host) {
            return Button::Look{"Mute", true, host.get_model().get_synth().is_band_muted(band),
                                0x8A3F3C};
        },
        [band](UiHost& host) {
            EditorSynth& synth = host.get_model().get_synth();
            synth.set_band_muted(band, !synth.is_band_muted(band));
        },
        "Silence this band; it is not stored");
}

} // namespace

Page make_compressor_page() {
    Page page{"Compressor", {}, {}};
    Rect rest = PAGE_AREA;
    Rect upper = add_panel(page, rest.cut_top(136), "Crossovers");
    rest.cut_top(GAP);
    Rect knobs = upper.cut_right(360);
    upper.cut_right(12);
    page.add<CrossoverPlot>(upper);
    add_row(page, knobs,
            {{CTRL_FCMPR_BAND12_CROSSOVER_FREQ, "1 / 2"},
             {CTRL_FCMPR_BAND23_CROSSOVER_FREQ, "2 / 3"},
             {CTRL_FCMPR_BAND34_CROSSOVER_FREQ, "3 / 4"},
             {CTRL_FCMPR_PRE_GAIN, "Pre gain"}});
    for (unsigned band = 0; band < MC_N_BANDS; band++) {
        const Rect area = column_of(rest, band, MC_N_BANDS);
        Rect inside = add_panel(page, area, "Band " + std::to_string(band + 1));
        add_mute_buttons(page, {area.right() - 124, area.y + 6, 112, 20}, band);
        const Rect lower = inside.cut_bottom(78);
        const Rect middle = inside.cut_bottom(82);
        inside.cut_bottom(2);
        inside.cut_top(4);
        page.add<CompressorPlot>(inside, band);
        const unsigned step = band * BAND_STEP;
        add_row(page, middle,
                {{CTRL_FCMPR_BAND1_THRESHOLD + step, "Threshold"},
                 {CTRL_FCMPR_BAND1_RATIO + step, "Ratio"},
                 {CTRL_FCMPR_BAND1_MAKEUP_GAIN + step, "Makeup"}});
        add_row(page, lower,
                {{CTRL_FCMPR_BAND1_ATTACK_TIME + step, "Attack"},
                 {CTRL_FCMPR_BAND1_RELEASE_TIME + step, "Release"}});
    }
    return page;
}

} // namespace tarquil
