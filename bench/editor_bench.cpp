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
    }
    DrawnPage(const DrawnPage&) = delete;
    DrawnPage& operator=(const DrawnPage&) = delete;
    // With all that later drawings find ready.
    void draw_first() {
        view.draw(context);
        view.wait_for_responses();
        view.draw(context);
    }
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
    drawn.draw_first();
    for (auto _ : state)
        drawn.view.draw(drawn.context);
    state.SetLabel(drawn.view.get_pages()[size_t(state.range(0))].title);
}
BENCHMARK(redraw)
    ->ArgsProduct({benchmark::CreateDenseRange(0, 13, 1), {100, 200}})
    ->Unit(benchmark::kMillisecond);

// The first picture of a window: no shape and no text has been drawn before.
void first_draw(benchmark::State& state) {
    DrawnPage drawn(unsigned(state.range(0)), 1.0);
    drawn.draw_first(); // the engine's waves are there
    for (auto _ : state) {
        state.PauseTiming();
        {
            EditorView fresh(drawn.model, drawn.settings, false);
            fresh.show_page(unsigned(state.range(0)));
            fresh.tick(0.0);
            state.ResumeTiming();
            fresh.draw(drawn.context);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetLabel(drawn.view.get_pages()[size_t(state.range(0))].title);
}
BENCHMARK(first_draw)->DenseRange(0, 13)->Unit(benchmark::kMillisecond);

// A control is turned, a step a picture: what shows it has another look each time.
void redraw_turned(benchmark::State& state) {
    DrawnPage drawn(unsigned(state.range(0)), 1.0);
    drawn.draw_first();
    const auto number = unsigned(state.range(1));
    int value = 0;
    for (auto _ : state) {
        drawn.model.set_value(number, value++ % 128);
        drawn.view.tick(0.016);
        drawn.view.draw(drawn.context);
    }
    state.SetLabel(std::string(drawn.view.get_pages()[size_t(state.range(0))].title) + ": " +
                   find_controller(number)->name);
}
BENCHMARK(redraw_turned)
    ->Args({0, CTRL_OSC1_FINE_TUNE})
    ->Args({1, CTRL_ENV1_ATTACK})
    ->Args({2, CTRL_LFO1_SPEED})
    ->Unit(benchmark::kMillisecond);

// What a window does 30 times a second while music plays.
void redraw_meters(benchmark::State& state) {
    DrawnPage drawn(unsigned(state.range(0)), 1.0);
    drawn.draw_first();
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
    drawn.draw_first();
    while (drawn.view.tick(1.0))
        drawn.view.draw_changes(drawn.context);
    for (auto _ : state)
        benchmark::DoNotOptimize(drawn.view.tick(1.0));
}
BENCHMARK(idle_tick);

} // namespace

} // namespace tarquil
