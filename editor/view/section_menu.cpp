// What can be done with a panel as a whole.

#include "editor/view/section_menu.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <random>
#include <set>

#include "editor/model/section.h"
#include "editor/model/section_text.h"
#include "editor/widgets/text_entry.h"

namespace tarquil {

namespace {

constexpr double BUTTON_WIDTH = 26.0;
constexpr double BUTTON_HEIGHT = 24.0;

std::minstd_rand& chance() {
    static std::minstd_rand generator{std::random_device{}()};
    return generator;
}

std::string lock_key(const Page& page, const Panel& panel) {
    return page.title + "/" + panel.title;
}

// A padlock, closed.
void draw_lock(Canvas& canvas, Point at) {
    canvas.polyline({{at.x - 3, at.y},
                     {at.x - 3, at.y - 3.5},
                     {at.x - 1.5, at.y - 5.5},
                     {at.x + 1.5, at.y - 5.5},
                     {at.x + 3, at.y - 3.5},
                     {at.x + 3, at.y}},
                    theme::WARM, 1.5);
    canvas.fill({at.x - 4.5, at.y - 0.5, 9, 6.5}, theme::WARM, 1);
}

void ask_amount(UiHost& host, const Rect& near) {
    const Rect field{near.right() - 90, near.y, 90, 24};
    host.open_overlay(std::make_unique<TextEntry>(
        field, "How far a value may go",
        std::to_string(host.get_view_state().chance_percent) + " %",
        [&host](const std::string& text) {
            int percent = 0;
            const auto [end, error] =
                std::from_chars(text.data(), text.data() + text.size(), percent);
            const std::string_view unit(end, size_t(text.data() + text.size() - end));
            const bool is_amount = error == std::errc() && percent >= 1 && percent <= 100 &&
                                   (unit.empty() || unit == "%" || unit == " %");
            if (is_amount)
                host.get_view_state().chance_percent = percent;
            return is_amount;
        }));
}

void paste(UiHost& host, const std::string& name, const std::vector<unsigned>& controllers) {
    const std::string problem =
        paste_section(host.get_model(), name, controllers, host.get_clipboard());
    if (!problem.empty())
        host.show_message(problem, MessageKind::FAILED);
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

bool is_locked(const ViewState& state, const Page& page, const Panel& panel) {
    return state.locked_sections.contains(lock_key(page, panel));
}

std::vector<unsigned> unlocked_controllers(const std::vector<Page>& pages, const ViewState& state) {
    std::set<unsigned> open;
    std::set<unsigned> closed; // those that are on several panels, too
    for (const Page& page : pages) {
        for (const Panel& panel : page.panels) {
            for (const unsigned number : section_controllers(page, panel)) {
                if (find_controller(number)->scope == ControllerScope::CHANNEL)
                    (is_locked(state, page, panel) ? closed : open).insert(number);
            }
        }
    }
    std::vector<unsigned> unlocked;
    std::set_difference(open.begin(), open.end(), closed.begin(), closed.end(),
                        std::back_inserter(unlocked));
    return unlocked;
}

Rect section_button(const Page& page, const Panel& panel) {
    if (section_controllers(page, panel).empty())
        return {};
    return {panel.area.right() - BUTTON_WIDTH - 4, panel.area.y + 2, BUTTON_WIDTH, BUTTON_HEIGHT};
}

void draw_section_button(Canvas& canvas, const Rect& button, bool is_hovered, bool is_locked) {
    constexpr double SPACE = 5.0;
    if (is_hovered)
        canvas.fill(button, theme::HOVER, 4);
    for (const double x : {-SPACE, 0.0, SPACE})
        canvas.disc({button.center().x + x, button.center().y}, 1.5, theme::TEXT_MUTED);
    if (is_locked)
        draw_lock(canvas, {button.x - 8, button.center().y});
}

std::unique_ptr<Menu> make_section_menu(UiHost& host, const std::vector<Page>& pages,
                                        const Page& page, const Panel& panel) {
    const std::vector<unsigned> controllers = section_controllers(page, panel);
    const std::string name = panel.title.empty() ? page.title : panel.title;
    const Rect button = section_button(page, panel);
    const ViewState& state = host.get_view_state();
    const double amount = state.chance_percent / 100.0;
    const std::string by = " by " + std::to_string(state.chance_percent) + " %";
    const bool is_closed = is_locked(state, page, panel);
    std::vector<MenuItem> items;
    items.push_back({"Initialise", false, true, [&host, controllers, name] {
                         initialise_section(host.get_model(), name, controllers);
                     }});
    items.push_back({"Randomise" + by, false, !is_closed, [&host, controllers, name, amount] {
                         randomise_section(host.get_model(), name, controllers, amount, chance());
                     }});
    items.push_back({"Randomise the sound" + by, false, true,
                     [&host, all = unlocked_controllers(pages, state), amount] {
                         randomise_section(host.get_model(), "the sound", all, amount, chance());
                     }});
    items.push_back({"Copy", false, true, [&host, controllers, name] {
                         host.set_clipboard(copied_section(host.get_model(), name, controllers));
                     }});
    items.push_back(
        {"Paste", false, true, [&host, controllers, name] { paste(host, name, controllers); }});
    items.push_back({"Locked for chance", is_closed, true, [&host, key = lock_key(page, panel)] {
                         std::set<std::string>& locked = host.get_view_state().locked_sections;
                         if (locked.erase(key) == 0)
                             locked.insert(key);
                     }});
    items.push_back(
        {"Amount of chance\u2026", false, true, [&host, button] { ask_amount(host, button); }});
    return std::make_unique<Menu>(button, std::move(items));
}

} // namespace tarquil
