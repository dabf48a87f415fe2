// The whole editor as screen readers are told of it.

#include <algorithm>

#include "editor/view/editor_view.h"
#include "editor/view/section_menu.h"

namespace tarquil {

// A list's chosen item has the focus instead of the list.
Spoken EditorView::spoken_widget(Widget& widget) {
    Spoken spoken = widget.spoken(*this);
    spoken.area = widget.get_area();
    spoken.identity = &widget;
    const bool has_focus = state_of(&widget).is_focused;
    if (widget.takes_focus() && has_keyboard)
        spoken.focus = [this, &widget] { focused = &widget; };
    const auto chosen = std::find_if(spoken.items.begin(), spoken.items.end(),
                                     [](const Spoken& item) { return item.is_on; });
    Spoken& bearer = chosen != spoken.items.end() ? *chosen : spoken;
    bearer.is_focused = has_focus;
    return spoken;
}

// Widgets stand in the panel that they lie in.
Spoken EditorView::spoken_page(const Page& page, const std::string& name) {
    Spoken group{SpokenRole::GROUP, name};
    group.identity = &page;
    for (const Panel& panel : page.panels) {
        Spoken part{SpokenRole::GROUP, panel.title.empty() ? name : panel.title};
        part.area = panel.area;
        part.identity = &panel;
        if (section_button(page, panel).w > 0.0)
            part.press = [this, &page, &panel] {
                open_overlay(make_section_menu(*this, pages, page, panel));
            };
        group.items.push_back(std::move(part));
    }
    for (const auto& widget : page.widgets) {
        Spoken told = spoken_widget(*widget);
        if (told.role == SpokenRole::NONE)
            continue;
        size_t place = 0;
        while (place < page.panels.size() && !page.panels[place].area.contains(told.area.center()))
            place++;
        (place < page.panels.size() ? group.items[place] : group).items.push_back(std::move(told));
    }
    return group;
}

Spoken EditorView::spoken() {
    Spoken window{SpokenRole::WINDOW, ""};
    window.area = {0, 0, double(WIDTH), double(height())};
    window.items.push_back(spoken_page(header, "Header"));
    window.items.push_back(spoken_page(pages[current_page], pages[current_page].title));
    if (settings.shows_keyboard)
        window.items.push_back(spoken_page(keyboard_page, "Keyboard"));
    for (const auto& overlay : overlays) {
        window.items.push_back(overlay->spoken());
        window.items.back().identity = overlay.get();
    }
    const std::string& said =
        status.message.empty() && status.notice.kind == EditorNotice::Kind::WARNING
            ? status.notice.text
            : status.message;
    if (!said.empty()) {
        Spoken message{SpokenRole::MESSAGE, said};
        message.identity = &status;
        window.items.push_back(std::move(message));
    }
    return window;
}

void EditorView::act(const std::function<void()>& action) {
    if (pressed != nullptr) // the user's hand comes first
        return;
    is_changed = true;
    action();
    drop_finished_overlays();
}

} // namespace tarquil
