// Prints where things are in the editor's window at 100 %, for scripts that use it by mouse: lines
// of a name, a tab, and a place in pixels.  There are "tab Filter", "channel 3", "Filter
// filter1_cutoff" (a controller on a page), "Filter Voice filter" (a panel's title), "Bank
// Initialise" (a button), "search", "first sound" and "second sound".

#include <cstdio>
#include <string>

#include "editor/model/bank_synth.h"
#include "editor/view/editor_view.h"
#include "editor/view/header.h"
#include "editor/view/tabs.h"
#include "editor/widgets/button.h"
#include "editor/widgets/pair_slider.h"
#include "editor/widgets/sound_list.h"
#include "editor/widgets/sound_search.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

void print_place(const std::string& name, Point at) {
    std::printf("%s\t%.0f %.0f\n", name.c_str(), at.x, at.y);
}

void print_page(const Page& page, UiHost& host) {
    for (const auto& widget : page.widgets) {
        const Rect& area = widget->get_area();
        const std::vector<unsigned> controllers = widget->controllers();
        if (controllers.size() == 1 || dynamic_cast<const PairSlider*>(widget.get()) != nullptr)
            print_place(page.title + " " + find_controller(controllers[0])->key, area.center());
        if (const auto channel = widget->dropped_on())
            print_place("channel " + std::to_string(*channel + 1), area.center());
        if (dynamic_cast<const SoundSearch*>(widget.get()) != nullptr)
            print_place("search", area.center());
        if (const auto* list = dynamic_cast<const SoundList*>(widget.get())) {
            print_place("first sound", list->row_center(0));
            print_place("second sound", list->row_center(1));
        }
        if (const auto* button = dynamic_cast<const Button*>(widget.get()))
            print_place(page.title + " " + button->text(host), area.center());
    }
    for (const Panel& panel : page.panels)
        print_place(page.title + " " + panel.title, {panel.area.x + 20, panel.area.y + 12});
}

void print_all() {
    BankSynth synth;
    EditorModel model(synth);
    EditorSettings settings;
    EditorView view(model, settings, true);
    const double no_lights[NUM_CHANNELS] = {};
    const LevelMeter meter;
    HeaderControls controls;
    controls.meter = &meter;
    controls.channel_lights = no_lights;
    controls.get_scale = [] { return 1.0; };
    print_page(make_header(controls), view);
    Page tabs;
    add_tabs(
        tabs, view.get_pages(), [] { return 0U; }, [](unsigned) {});
    for (size_t i = 0; i < view.get_pages().size(); i++) {
        const Page& page = view.get_pages()[i];
        print_place("tab " + page.title, tabs.widgets[i]->get_area().center());
        print_page(page, view);
    }
}

} // namespace

} // namespace tarquil

int main() {
    tarquil::print_all();
}
