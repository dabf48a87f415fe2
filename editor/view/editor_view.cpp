// The whole editor as a picture that takes input: its parts, and what lies over them.

#include "editor/view/editor_view.h"

#include <algorithm>

#include "editor/pages/pages.h"
#include "editor/view/file_actions.h"
#include "editor/view/header.h"
#include "editor/view/tabs.h"
#include "editor/widgets/file_browser.h"

namespace tarquil {

namespace {

bool is_widget_of(const Page& page, const Widget* wanted) {
    return std::any_of(page.widgets.begin(), page.widgets.end(),
                       [&](const auto& widget) { return widget.get() == wanted; });
}

} // namespace

EditorView::EditorView(EditorModel& shown_model, EditorSettings& shown_settings, bool keyboard,
                       EditorDocument* kept, bool computer_keys)
    : model(shown_model), settings(shown_settings), document(kept), pages(make_pages()),
      hands(shown_model, computer_keys), keyboard_page(make_keyboard(hands, key_layout)),
      has_keyboard(keyboard) {
    view_state.selected_slot = model.get_state().program;
    HeaderControls controls;
    controls.meter = &level_meter;
    controls.clear_clip = [this] { level_meter.clear_clip(); };
    controls.channel_lights = channel_lights.data();
    controls.get_scale = [this] { return settings.scale; };
    controls.set_scale = [this](double scale) { choose_scale(scale); };
    controls.get_largest_scale = [this] { return scales.largest; };
    header = make_header(controls);
    add_tabs(
        header, pages, [this] { return current_page; },
        [this](unsigned index) { show_page(index); });
    add_keyboard_switch(
        header, [this] { return settings.shows_keyboard; },
        [this](bool shown) { show_keyboard(shown); });
}

EditorView::~EditorView() {
    hide_page();
    view_state.scope.follow(model.get_synth(), false);
    model.stop_learning();
    model.end_gesture();
}

void EditorView::hide_page() {
    view_state.carried.reset();
    if (pressed != nullptr)
        pressed->release(*this);
    pressed = nullptr;
    for (const auto& widget : pages[current_page].widgets)
        widget->hide(*this);
}

void EditorView::show_page(unsigned index) {
    if (index >= pages.size())
        return;
    hide_page();
    model.end_gesture();
    current_page = index;
    hovered = nullptr;
    if (!is_widget_of(header, focused) && !is_widget_of(keyboard_page, focused))
        focused = nullptr;
    is_changed = true;
}

void EditorView::show_keyboard(bool shown) {
    settings.shows_keyboard = shown;
    if (shown)
        return;
    if (is_widget_of(keyboard_page, focused))
        focused = nullptr;
    // Nobody would see why a host gets no keys.
    if (!has_keyboard)
        hands.set_plays_computer_keys(false);
}

std::vector<Page*> EditorView::shown_pages() {
    std::vector<Page*> shown = {&header, &pages[current_page]};
    if (settings.shows_keyboard)
        shown.push_back(&keyboard_page);
    return shown;
}

void EditorView::wait_for_responses() {
    responses.wait();
    responses.refresh();
}

void EditorView::open_overlay(std::unique_ptr<Overlay> overlay) {
    overlays.push_back(std::move(overlay));
    is_changed = true;
}

void EditorView::show_message(const std::string& text, MessageKind kind) {
    status.message = text;
    status.kind = kind;
    is_changed = true;
}

void EditorView::choose_scale(double scale) {
    settings.scale = scale;
    settings.is_scale_chosen = true;
}

ThemeKind EditorView::get_theme() {
    const auto* const found =
        std::find_if(std::begin(ALL_THEMES), std::end(ALL_THEMES),
                     [this](ThemeKind theme) { return settings.theme == theme_key(theme); });
    return found != std::end(ALL_THEMES) ? *found : ThemeKind::DARK;
}

void EditorView::set_theme(ThemeKind theme) {
    settings.theme = theme_key(theme);
    is_changed = true;
}

bool EditorView::may_close() {
    if (close_chosen || document == nullptr || !document->is_changed())
        return true;
    if (closing_question == nullptr) {
        ask_to_save(*this, "closing", [this] { close_chosen = true; });
        closing_question = overlays.back().get();
    }
    return false;
}

void EditorView::choose_file(FileRequest request) {
    open_overlay(std::make_unique<FileBrowser>(
        *this, std::move(request), settings.folder,
        [this](const std::string& folder) { settings.folder = folder; }));
}

Widget* EditorView::widget_at(Point at) {
    for (Page* page : shown_pages()) {
        for (const auto& widget : page->widgets) {
            if (widget->get_area().contains(at))
                return widget.get();
        }
    }
    return nullptr;
}

std::optional<unsigned> EditorView::channel_at(Point at) {
    const Widget* const widget = widget_at(at);
    return widget != nullptr ? widget->dropped_on() : std::nullopt;
}

void EditorView::set_clipboard(const std::string& text) {
    kept_clipboard = text;
    if (write_clipboard)
        write_clipboard(text);
}

std::string EditorView::get_clipboard() {
    return read_clipboard ? read_clipboard() : kept_clipboard;
}

void EditorView::drop_finished_overlays() {
    std::erase_if(overlays, [this](const auto& overlay) {
        if (overlay->is_done() && overlay.get() == closing_question)
            closing_question = nullptr;
        return overlay->is_done();
    });
}

} // namespace tarquil
