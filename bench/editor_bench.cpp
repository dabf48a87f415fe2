// The cost of drawing each page of the editor anew, with the curves already computed.

#include <benchmark/benchmark.h>
#include <cairo.h>

#include "vst/editor/model/bank_synth.h"
#include "vst/editor/ui/editor_view.h"

namespace {

// The page's number and its scale in percent.
void redraw(benchmark::State& state) {
    BankSynth synth;
    synth.meters.peaks = {0.5F, 0.5F};
    synth.meters.active_channels = 0xFFFF;
    EditorModel model(synth);
    EditorSettings settings;
    EditorView view(model, settings, false);
    view.show_page(unsigned(state.range(0)));
    view.tick(0.0);
    const double scale = double(state.range(1)) / 100;
    cairo_surface_t* surface = cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, int(EditorView::WIDTH * scale), int(EditorView::HEIGHT * scale));
    cairo_t* context = cairo_create(surface);
    cairo_scale(context, scale, scale);
    view.draw(context);
    view.wait_for_responses();
    for (auto _ : state)
        view.draw(context);
    state.SetLabel(view.get_pages()[size_t(state.range(0))].title);
    cairo_destroy(context);
    cairo_surface_destroy(surface);
}
BENCHMARK(redraw)
    ->ArgsProduct({benchmark::CreateDenseRange(0, 10, 1), {100, 200}})
    ->Unit(benchmark::kMillisecond);

} // namespace
