// The page of the scope and the spectrum.

#include "common/number_text.h"
#include "editor/pages/layout.h"
#include "editor/pages/pages.h"
#include "editor/plots/scope_plot.h"
#include "editor/widgets/amount_text.h"
#include "editor/widgets/button.h"

namespace tarquil {

namespace {

constexpr double BUTTON_HEIGHT = 26.0;
constexpr double SPACE = 6.0;

OutputScope& scope_of(UiHost& host) {
    return host.get_view_state().scope;
}

void add_source(Page& page, const Rect& area, const char* title, ScopeSource source,
                const char* tooltip) {
    page.add<Button>(
        area,
        [title, source](UiHost& host) {
            return Button::Look{title, true, scope_of(host).source == source, theme::ACCENT_DIM};
        },
        [source](UiHost& host) {
            scope_of(host).source = source;
            scope_of(host).clear_peaks();
        },
        tooltip);
}

void add_time(Page& page, const Rect& area, double milliseconds) {
    page.add<Button>(
        area,
        [milliseconds](UiHost& host) {
            return Button::Look{trimmed_number(milliseconds, 0) + " ms", true,
                                scope_of(host).shown_ms == milliseconds, theme::ACCENT_DIM};
        },
        [milliseconds](UiHost& host) { scope_of(host).shown_ms = milliseconds; },
        "How much time the scope shows");
}

void add_buttons(Page& page, Rect row) {
    add_source(page, row.cut_left(120), "Everything", ScopeSource::WHOLE,
               "The output as it is heard");
    row.cut_left(SPACE);
    add_source(page, row.cut_left(120), "This program", ScopeSource::PROGRAM,
               "What the channels that play this program add,\nbefore reverb, delay and the "
               "master section");
    row.cut_left(24);
    for (const double milliseconds : {5.0, 10.0, 20.0, 50.0, OutputScope::MAX_MS}) {
        add_time(page, row.cut_left(64), milliseconds);
        row.cut_left(SPACE);
    }
    page.add<Button>(
        row.cut_right(90),
        [](UiHost& host) {
            return Button::Look{"Pause", true, scope_of(host).is_paused, theme::ACCENT_DIM};
        },
        [](UiHost& host) { scope_of(host).is_paused = !scope_of(host).is_paused; },
        "Keeps the picture");
    row.cut_right(SPACE);
    page.add<Button>(
        row.cut_right(100),
        [](UiHost& host) {
            return Button::Look{"Hold peaks", true, scope_of(host).holds_peaks, theme::ACCENT_DIM};
        },
        [](UiHost& host) {
            scope_of(host).holds_peaks = !scope_of(host).holds_peaks;
            scope_of(host).clear_peaks();
        },
        "Marks the highest level of each frequency");
}

} // namespace

Page make_scope_page() {
    Page page{"Scope", {}, {}};
    Rect rest = PAGE_AREA;
    const Rect spectrum = rest.cut_bottom((rest.h - GAP) / 2);
    rest.cut_bottom(GAP);
    Rect upper = add_panel(page, rest, "");
    add_buttons(page, upper.cut_top(BUTTON_HEIGHT));
    upper.cut_top(SPACE);
    page.add<ScopePlot>(upper);
    page.add<SpectrumPlot>(add_panel(page, spectrum, ""));
    return page;
}

} // namespace tarquil
