// What can be done with a panel as a whole.

#include "editor/view/section_menu.h"

#include <algorithm>
#include <random>

#include "editor/model/section.h"

namespace tarquil {

namespace {

constexpr double BUTTON_WIDTH = 26.0;
constexpr double BUTTON_HEIGHT = 24.0;

struct Amount {
    const char* text;
    double amount;
};

constexpr Amount AMOUNTS[] = {
    {"Randomise a little", 0.08}, {"Randomise", 0.25}, {"Randomise all of it", 1.0}};

std::minstd_rand& chance() {
    static std::minstd_rand generator{std::random_device{}()};
    return generator;
}

} // namespace

std::vector<unsigned> section_controllers(const Page& page, const Panel& panel) {
    std::vector<unsigned> found;
    for (const auto& widget : page.widgets) {
        if (!panel.area.contains(widget->get_area().center()))
            continue;
        for (const unsigned number : widget->controllers()) {
            if (std::find(found.begin(), found.end(), number) == found.end())
                found.push_back(number);
        }
    }
    return found;
}

Rect section_button(const Page& page, const Panel& panel) {
    if (section_controllers(page, panel).empty())
        return {};
    return {panel.area.right() - BUTTON_WIDTH - 4, panel.area.y + 2, BUTTON_WIDTH, BUTTON_HEIGHT};
}

void draw_section_button(Canvas& canvas, const Rect& button, bool is_hovered) {
    constexpr double SPACE = 5.0;
    if (is_hovered)
        canvas.fill(button, theme::HOVER, 4);
    for (const double x : {-SPACE, 0.0, SPACE})
        canvas.disc({button.center().x + x, button.center().y}, 1.5, theme::TEXT_MUTED);
}

std::unique_ptr<Menu> make_section_menu(UiHost& host, const Page& page, const Panel& panel) {
    const std::vector<unsigned> controllers = section_controllers(page, panel);
    const std::string name = panel.title.empty() ? page.title : panel.title;
    std::vector<MenuItem> items;
    items.push_back({"Initialise", false, true, [&host, controllers, name] {
                         initialise_section(host.get_model(), name, controllers);
                     }});
    for (const auto& [text, amount] : AMOUNTS)
        items.push_back({text, false, true, [&host, controllers, name, amount = amount] {
                             randomise_section(host.get_model(), name, controllers, amount,
                                               chance());
                         }});
    return std::make_unique<Menu>(section_button(page, panel), std::move(items));
}

} // namespace tarquil
