// The cost of drawing each page of the editor, with the curves already computed, and of its meters.

#include <benchmark/benchmark.h>
#include <cairo.h>

#include "editor/model/bank_synth.h"
#include "editor/view/editor_view.h"

namespace tarquil {

namespace {

// A page of an editor with its picture.
class DrawnPage {
  public:
    DrawnPage(unsigned page, double scale)
        : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, int(EditorView::WIDTH * scale),
                                             int(FULL_HEIGHT * scale))),
          context(cairo_create(surface)) {
        synth.meters.peaks = {0.5F, 0.5F};
        synth.meters.active_channels = 0xFFFF;
        view.show_page(page);
        view.tick(0.0);
        cairo_scale(context, scale, scale);
        view.draw(context);
        view.wait_for_responses();
    }
    DrawnPage(const DrawnPage&) = delete;
    DrawnPage& operator=(const DrawnPage&) = delete;
    ~DrawnPage() {
        cairo_destroy(context);
        cairo_surface_destroy(surface);
    }

    BankSynth synth;
    EditorModel model{synth};
    EditorSettings settings;
    EditorView view{model, settings, false};
    cairo_surface_t* const surface;
    cairo_t* const context;
};

// The page's number and its scale in percent.
void redraw(benchmark::State& state) {
    DrawnPage drawn(unsigned(state.range(0)), double(state.range(1)) / 100);
    for (auto _ : state)
        drawn.view.draw(drawn.context);
    state.SetLabel(drawn.view.get_pages()[size_t(state.range(0))].title);
}
BENCHMARK(redraw)
    ->ArgsProduct({benchmark::CreateDenseRange(0, 13, 1), {100, 200}})
    ->Unit(benchmark::kMillisecond);

// What a window does 30 times a second while music plays.
void redraw_meters(benchmark::State& state) {
    DrawnPage drawn(unsigned(state.range(0)), 1.0);
    for (auto _ : state) {
        drawn.synth.meters.voices++;
        drawn.view.tick(1.0);
        drawn.view.draw_changes(drawn.context);
    }
    state.SetLabel(drawn.view.get_pages()[size_t(state.range(0))].title);
}
BENCHMARK(redraw_meters)->Arg(0)->Arg(10)->Arg(11)->Unit(benchmark::kMillisecond);

// What a window does 60 times a second while nothing happens.
void idle_tick(benchmark::State& state) {
    DrawnPage drawn(0, 1.0);
    while (drawn.view.tick(1.0))
        drawn.view.draw_changes(drawn.context);
    for (auto _ : state)
        benchmark::DoNotOptimize(drawn.view.tick(1.0));
}
BENCHMARK(idle_tick);

} // namespace

} // namespace tarquil
