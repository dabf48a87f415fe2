// The program's name at the top left, which opens the menu of files and looks.

#include "editor/view/main_menu.h"

#include "editor/view/file_actions.h"
#include "editor/widgets/learned_list.h"
#include "editor/widgets/menu.h"

namespace tarquil {

void MainMenu::draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& state) {
    constexpr double TEXT_SIZE = 17.0;
    if (state.is_hovered)
        canvas.fill(area, theme::HOVER, 4);
    Rect rest = area;
    const Point arrow = rest.cut_right(14).center();
    canvas.text(rest, "Tarquil", {TEXT_SIZE, theme::ACCENT, Align::LEFT, Weight::BOLD});
    canvas.polygon({{arrow.x - 4, arrow.y - 2}, {arrow.x + 4, arrow.y - 2}, {arrow.x, arrow.y + 3}},
                   theme::ACCENT);
    if (state.is_focused)
        canvas.frame(area, theme::FOCUS, 4);
}

void MainMenu::open(UiHost& host) {
    std::vector<MenuItem> items;
    if (EditorDocument* document = host.get_document()) {
        items.push_back(
            {"Open bank\u2026   Ctrl+O", false, true, [&host] { open_document(host); }});
        items.push_back({"Save   Ctrl+S", false, document->is_changed() || document->path().empty(),
                         [&host] { save_document(host); }});
        items.push_back(
            {"Save as\u2026   Ctrl+Shift+S", false, true, [&host] { save_document_as(host); }});
    }
    items.push_back({"MIDI controllers\u2026", false, true,
                     [&host] { host.open_overlay(std::make_unique<LearnedList>(host)); }});
    items.push_back({"Strike held notes again while editing", host.strikes_again(), true,
                     [&host] { host.set_strikes_again(!host.strikes_again()); }});
    constexpr std::pair<ThemeKind, const char*> THEMES[] = {
        {ThemeKind::DARK, "Dark theme"},
        {ThemeKind::LIGHT, "Light theme"},
        {ThemeKind::HIGH_CONTRAST, "High contrast"}};
    for (const auto& [theme, name] : THEMES)
        items.push_back({name, host.get_theme() == theme, true,
                         [&host, chosen = theme] { host.set_theme(chosen); }});
    host.open_overlay(std::make_unique<Menu>(area, std::move(items)));
}

bool MainMenu::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT)
        open(host);
    return false;
}

bool MainMenu::press_key(UiHost& host, const KeyEvent& key) {
    const bool is_press = key.key == Key::ENTER || (key.key == Key::CHARACTER && key.text == " ");
    if (is_press)
        open(host);
    return is_press;
}

std::string MainMenu::tooltip(UiHost& host) {
    return host.get_document() != nullptr ? "Files, MIDI and looks" : "MIDI and looks";
}

Spoken MainMenu::spoken(UiHost& host) {
    Spoken spoken{SpokenRole::BUTTON, "Main menu"};
    spoken.help = tooltip(host);
    spoken.press = [this, &host] { open(host); };
    return spoken;
}

} // namespace tarquil
