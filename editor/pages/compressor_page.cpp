// The page of the four-band master compressor.

#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/compressor_plot.h"
#include "editor/widgets/button.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

// True when every other band is muted, and this one is not.
bool is_solo(EditorSynth& synth, unsigned band) {
    for (unsigned other = 0; other < NUM_COMPRESSOR_BANDS; other++) {
        if (synth.is_band_muted(other) == (other == band))
            return false;
    }
    return true;
}

void toggle_solo(EditorSynth& synth, unsigned band) {
    const bool was_solo = is_solo(synth, band);
    for (unsigned other = 0; other < NUM_COMPRESSOR_BANDS; other++)
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
                                theme::MUTED};
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
            {{CROSSOVER_ROWS[0], "1 / 2"},
             {CROSSOVER_ROWS[1], "2 / 3"},
             {CROSSOVER_ROWS[2], "3 / 4"},
             {CTRL_FCMPR_PRE_GAIN, "Pre gain"}});
    for (unsigned band = 0; band < NUM_COMPRESSOR_BANDS; band++) {
        const Rect area = column_of(rest, band, NUM_COMPRESSOR_BANDS);
        Rect inside = add_panel(page, area, "Band " + std::to_string(band + 1));
        add_mute_buttons(page, {area.right() - 146, area.y + 4, 112, 24}, band);
        const Rect lower = inside.cut_bottom(78);
        const Rect middle = inside.cut_bottom(82);
        inside.cut_bottom(2);
        inside.cut_top(4);
        page.add<CompressorPlot>(inside, band);
        const CompressorBandRows rows = compressor_band_rows(band);
        add_row(page, middle,
                {{rows.threshold, "Threshold"}, {rows.ratio, "Ratio"}, {rows.makeup, "Makeup"}});
        add_row(page, lower, {{rows.attack, "Attack"}, {rows.release, "Release"}});
    }
    return page;
}

} // namespace tarquil
