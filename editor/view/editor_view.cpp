// The whole editor as a picture that takes input.

#include "editor/view/editor_view.h"

#include <algorithm>
#include <cmath>

#include "common/assertion.h"
#include "common/characters.h"
#include "editor/pages/file_exchange.h"
#include "editor/pages/pages.h"
#include "editor/view/file_actions.h"
#include "editor/view/header.h"
#include "editor/view/section_menu.h"
#include "editor/view/tabs.h"
#include "editor/view/tooltip.h"
#include "editor/widgets/file_browser.h"
#include "editor/widgets/pair_slider.h"

namespace tarquil {

namespace {

constexpr double TOOLTIP_DELAY = 0.6; // seconds
constexpr uint32_t DOUBLE_CLICK_MS = 350;
constexpr double DOUBLE_CLICK_REACH = 5.0; // units
constexpr double LIGHT_SECONDS = 0.25;
constexpr double METER_PERIOD = 1.0 / 30; // seconds: smooth to the eye
constexpr double STATUS_HEIGHT = 24.0;

constexpr double NOTICE_PERIOD = 0.3; // seconds

Pointer pointer_of(const PointerEvent& event) {
    Pointer pointer;
    pointer.at = {event.x, event.y};
    switch (event.button) {
    case 1:
        pointer.button = Pointer::Button::LEFT;
        break;
    case 2:
        pointer.button = Pointer::Button::MIDDLE;
        break;
    case 3:
        pointer.button = Pointer::Button::RIGHT;
        break;
    default:
        break;
    }
    pointer.shift = event.shift;
    pointer.control = event.control;
    return pointer;
}

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

WidgetState EditorView::state_of(const Widget* widget) const {
    const bool is_free = overlays.empty();
    return {is_free && widget == hovered && (pressed == nullptr || pressed == widget),
            widget == pressed, is_free && has_keyboard && widget == focused};
}

void EditorView::draw_ground(Canvas& canvas) {
    canvas.fill({0, 0, WINDOW_WIDTH, WINDOW_HEIGHT}, theme::BACKGROUND);
    canvas.fill({0, WINDOW_HEIGHT, WINDOW_WIDTH, KEYBOARD_HEIGHT}, theme::HEADER);
    canvas.fill({0, 0, WINDOW_WIDTH, HEADER_HEIGHT}, theme::HEADER);
    for (const Panel& panel : pages[current_page].panels)
        canvas.fill(panel.area, theme::PANEL, 6);
}

void EditorView::draw_page(Canvas& canvas) {
    draw_ground(canvas);
    for (const Panel& panel : pages[current_page].panels)
        canvas.text({panel.area.x + 12, panel.area.y + 6, panel.area.w - 24, 20}, panel.title,
                    {theme::NORMAL, theme::TEXT, Align::LEFT, Weight::BOLD});
    for (const Panel& panel : pages[current_page].panels) {
        const Rect button = section_button(pages[current_page], panel);
        if (button.w > 0.0)
            draw_section_button(canvas, button,
                                overlays.empty() && pressed == nullptr && hovered == nullptr &&
                                    button.contains(pointer_at),
                                is_locked(view_state, pages[current_page], panel));
    }
    for (Page* page : shown_pages()) {
        for (const auto& widget : page->widgets) {
            TARQ_ASSERT(widget != nullptr);
            widget->draw(canvas, *this, state_of(widget.get()));
            draw_learned_frame(canvas, *widget);
        }
    }
}

// Around the control that waits for a MIDI controller.
void EditorView::draw_learned_frame(Canvas& canvas, const Widget& widget) {
    if (!model.learning())
        return;
    const std::vector<unsigned> own = widget.controllers();
    const bool is_control = own.size() == 1 || dynamic_cast<const PairSlider*>(&widget) != nullptr;
    if (is_control && own[0] == *model.learning())
        canvas.frame(widget.get_area().inset(-2), theme::WARM, 5, 2);
}

std::vector<Widget*> EditorView::meter_widgets() {
    std::vector<Widget*> found;
    for (Page* page : shown_pages()) {
        for (const auto& widget : page->widgets) {
            if (widget->shows_meters())
                found.push_back(widget.get());
        }
    }
    return found;
}

std::vector<Rect> EditorView::draw_meters(Canvas& canvas) {
    std::vector<Rect> drawn;
    for (Widget* widget : meter_widgets()) {
        std::vector<Rect> moved = widget->moved_areas(*this);
        for (Rect& place : moved)
            place = place.within(widget->get_area());
        std::erase_if(moved, [](const Rect& place) { return place.w == 0 || place.h == 0; });
        if (moved.empty())
            continue;
        canvas.clip(moved);
        draw_ground(canvas);
        widget->draw(canvas, *this, state_of(widget));
        draw_overlays(canvas);
        canvas.unclip();
        drawn.insert(drawn.end(), moved.begin(), moved.end());
    }
    return drawn;
}

void EditorView::draw_overlays(Canvas& canvas) {
    for (const auto& overlay : overlays)
        overlay->draw(canvas);
    if (const auto& carried = view_state.carried)
        draw_tooltip_box(canvas, carried->at, carried->name);
    const std::string tooltip = tooltip_text();
    if (!tooltip.empty())
        draw_tooltip_box(canvas, pointer_at, tooltip);
}

std::string EditorView::tooltip_text() {
    if (still_for < TOOLTIP_DELAY || hovered == nullptr || pressed != nullptr || !overlays.empty())
        return "";
    return hovered->tooltip(*this);
}

void EditorView::draw(cairo_t* context) {
    Canvas canvas(context, get_theme());
    draw_page(canvas);
    draw_status(canvas,
                {0, WINDOW_HEIGHT - STATUS_HEIGHT - 2, WINDOW_WIDTH - KEYBOARD_SWITCH_WIDTH - 20,
                 STATUS_HEIGHT},
                status);
    draw_overlays(canvas);
    is_changed = are_meters_new = false;
}

std::vector<Rect> EditorView::draw_changes(cairo_t* context) {
    if (is_changed) {
        draw(context);
        return {{0, 0, WINDOW_WIDTH, FULL_HEIGHT}};
    }
    if (!are_meters_new)
        return {};
    are_meters_new = false;
    Canvas canvas(context, get_theme());
    return draw_meters(canvas);
}

bool EditorView::update_meters(double seconds) {
    const EditorMeters now = model.get_synth().read_meters();
    bool is_new = now.voices != meters.voices || now.band_levels != meters.band_levels ||
                  now.band_gains != meters.band_gains || now.note != meters.note;
    meters = now;
    const LevelMeter before = level_meter;
    level_meter.update(now.peaks, seconds);
    is_new = is_new || before.get_peak() != level_meter.get_peak();
    for (unsigned side = 0; side < 2; side++)
        is_new = is_new || before.get_level(side) != level_meter.get_level(side) ||
                 before.get_hold(side) != level_meter.get_hold(side);
    for (unsigned channel = 0; channel < channel_lights.size(); channel++) {
        double& light = channel_lights[channel];
        const double last = light;
        const bool has_note = (now.active_channels >> channel & 1U) != 0;
        light = has_note ? 1.0 : std::max(0.0, light - seconds / LIGHT_SECONDS);
        is_new = is_new || light != last;
    }
    is_new = hands.update() || is_new;
    return update_scope(seconds) || is_new;
}

bool EditorView::update_notice(double seconds) {
    until_notice -= seconds;
    if (until_notice > 0.0)
        return false;
    until_notice = NOTICE_PERIOD;
    EditorNotice now = model.get_synth().read_notice();
    const bool is_new = now != status.notice;
    status.notice = std::move(now);
    return is_new;
}

bool EditorView::update_learning() {
    const std::optional<unsigned> target = model.learning();
    const std::optional<unsigned> heard = model.finish_learning();
    if (!heard)
        return false;
    show_message(std::string(find_controller(*target)->name) + " is moved by MIDI controller " +
                     std::to_string(*heard) + " now",
                 MessageKind::DONE);
    return true;
}

// What follows the host's tempo is drawn at it.
bool EditorView::update_tempo() {
    constexpr double SAME = 0.005; // quarter notes a minute
    const bool is_followed = model.get_state().tempo_sync;
    const bool is_new = is_followed != view_state.times.is_on() ||
                        (is_followed && std::abs(meters.tempo - view_state.tempo) > SAME);
    if (!is_new)
        return false;
    view_state.tempo = meters.tempo;
    view_state.times.follow(is_followed ? view_state.samples_per_quarter() : 0.0);
    return true;
}

bool EditorView::update_scope(double seconds) {
    const auto& widgets = pages[current_page].widgets;
    const bool is_shown = std::any_of(widgets.begin(), widgets.end(),
                                      [](const auto& widget) { return widget->shows_output(); });
    view_state.scope.follow(model.get_synth(), is_shown);
    return is_shown && view_state.scope.update(model.get_synth(), seconds);
}

bool EditorView::tick(double seconds) {
    model.pass_time(seconds);
    const bool had_tooltip = still_for >= TOOLTIP_DELAY;
    still_for += seconds;
    const bool is_tooltip_due = !had_tooltip && still_for >= TOOLTIP_DELAY && hovered != nullptr;
    const bool is_model_new = may_have_changed.exchange(false) && model.refresh();
    const bool is_response_new = responses.refresh();
    const bool is_notice_new = update_notice(seconds);
    const bool is_learned = update_learning();
    is_changed = is_changed || is_tooltip_due || is_model_new || is_response_new || is_notice_new ||
                 is_learned;
    model.strike_if_due(settings.strikes_again);
    until_meters -= seconds;
    since_meters += seconds;
    if (until_meters <= 0.0) {
        are_meters_new = update_meters(since_meters) || are_meters_new;
        until_meters = METER_PERIOD;
        since_meters = 0.0;
    }
    is_changed = update_tempo() || is_changed;
    return is_changed || are_meters_new;
}

void EditorView::drop_finished_overlays() {
    std::erase_if(overlays, [this](const auto& overlay) {
        if (overlay->is_done() && overlay.get() == closing_question)
            closing_question = nullptr;
        return overlay->is_done();
    });
}

bool EditorView::is_double_click(const PointerEvent& event) {
    const double way = std::hypot(event.x - press_at.x, event.y - press_at.y);
    const bool is_second = was_pressed && event.button == 1 && way < DOUBLE_CLICK_REACH &&
                           event.time_ms - press_time < DOUBLE_CLICK_MS;
    was_pressed = event.button == 1 && !is_second;
    press_time = event.time_ms;
    press_at = {event.x, event.y};
    return is_second;
}

void EditorView::press(const PointerEvent& event) {
    Pointer pointer = pointer_of(event);
    pointer.is_double = is_double_click(event);
    is_changed = true;
    still_for = 0.0;
    pointer_at = pointer.at;
    status.message.clear();
    if (model.learning()) { // a click anywhere ends it
        model.stop_learning();
        return;
    }
    if (!overlays.empty()) {
        overlays.back()->press(pointer);
        drop_finished_overlays();
        return;
    }
    if (pressed != nullptr)
        return;
    Widget* widget = widget_at(pointer.at);
    hovered = widget;
    if (widget == nullptr) {
        press_panel(pointer);
        return;
    }
    if (widget->takes_focus())
        focused = widget;
    if (widget->press(*this, pointer))
        pressed = widget;
}

void EditorView::press_panel(const Pointer& pointer) {
    const Page& page = pages[current_page];
    for (const Panel& panel : page.panels) {
        const Rect button = section_button(page, panel);
        const bool is_right = pointer.button == Pointer::Button::RIGHT;
        if (button.w > 0.0 && (is_right ? panel.area : button).contains(pointer.at))
            open_overlay(make_section_menu(*this, pages, page, panel));
    }
}

void EditorView::set_clipboard(const std::string& text) {
    kept_clipboard = text;
    if (write_clipboard)
        write_clipboard(text);
}

std::string EditorView::get_clipboard() {
    return read_clipboard ? read_clipboard() : kept_clipboard;
}

void EditorView::move(const PointerEvent& event) {
    const Pointer pointer = pointer_of(event);
    is_changed = true;
    still_for = 0.0;
    pointer_at = pointer.at;
    if (!overlays.empty()) {
        overlays.back()->move(pointer);
        return;
    }
    if (pressed != nullptr) {
        pressed->drag(*this, pointer);
        return;
    }
    hovered = widget_at(pointer.at);
    if (hovered != nullptr)
        hovered->hover(*this, pointer.at);
}

void EditorView::release(const PointerEvent& event) {
    const Pointer pointer = pointer_of(event);
    if (pressed == nullptr || pointer.button != Pointer::Button::LEFT)
        return;
    is_changed = true;
    pressed->release(*this);
    pressed = nullptr;
    hovered = widget_at(pointer.at);
}

void EditorView::wheel(const PointerEvent& event, double steps) {
    const Pointer pointer = pointer_of(event);
    is_changed = true;
    if (!overlays.empty()) {
        overlays.back()->wheel(pointer, steps);
        return;
    }
    Widget* widget = widget_at(pointer.at);
    if (widget != nullptr && pressed == nullptr)
        widget->wheel(*this, pointer, steps);
}

void EditorView::leave() {
    if (pressed != nullptr)
        return;
    is_changed = true;
    hovered = nullptr;
    pointer_at = {-1.0, -1.0};
}

void EditorView::move_focus(int steps) {
    std::vector<Widget*> order;
    for (Page* page : shown_pages()) {
        for (const auto& widget : page->widgets) {
            if (widget->takes_focus())
                order.push_back(widget.get());
        }
    }
    const auto found = std::find(order.begin(), order.end(), focused);
    const auto size = int(order.size());
    int index = int(found - order.begin());
    if (found == order.end())
        index = steps > 0 ? -1 : 0;
    focused = order[size_t((index + steps + size) % size)];
}

bool EditorView::key(const KeyEvent& event) {
    if (!overlays.empty()) {
        is_changed = true;
        overlays.back()->press_key(event);
        drop_finished_overlays();
        return true;
    }
    if (!has_keyboard)
        return false;
    if (pressed != nullptr) // a drag goes on
        return true;
    is_changed = is_changed || !status.message.empty();
    status.message.clear();
    // A key that is held to play a note comes again and again.
    const bool is_used = use_key(event);
    is_changed = is_changed || is_used;
    return is_used;
}

bool EditorView::use_key(const KeyEvent& event) {
    if (event.key == Key::ESCAPE && model.learning()) {
        model.stop_learning();
        return true;
    }
    if (event.key == Key::TAB) {
        move_focus(event.shift ? -1 : 1);
        return true;
    }
    return (event.key == Key::CHARACTER && event.control && use_shortcut(event)) ||
           (focused != nullptr && focused->press_key(*this, event));
}

bool EditorView::use_shortcut(const KeyEvent& event) {
    const std::string key = lower_case(event.text);
    if (key == "z" && event.shift)
        model.redo();
    else if (key == "z")
        model.undo();
    else if (key == "s" && event.shift)
        save_document_as(*this);
    else if (key == "s")
        save_document(*this);
    else if (key == "o")
        open_document(*this);
    else if (key == "+" || key == "=")
        choose_scale(next_scale(settings.scale, true, scales.largest));
    else if (key == "-" || key == "_")
        choose_scale(next_scale(settings.scale, false, scales.largest));
    else if (key == "0")
        choose_scale(scales.usual);
    else
        return false;
    return true;
}

bool EditorView::drag_file(Point at) {
    if (!overlays.empty() || pressed != nullptr)
        return false;
    view_state.carried = {"Load", at, channel_at(at)};
    is_changed = true;
    return true;
}

void EditorView::end_file_drag() {
    view_state.carried.reset();
    is_changed = true;
}

void EditorView::drop_files(const std::vector<std::string>& paths, Point at) {
    end_file_drag();
    if (paths.size() == 1)
        load_dropped_file(*this, paths.front(), channel_at(at).value_or(model.channel()));
    else
        show_message("One file at a time can be dropped", MessageKind::FAILED);
}

void EditorView::press_computer_key(uint32_t code, uint32_t character) {
    if (!wants_keys() && hands.plays_computer_keys())
        is_changed = hands.computer_keys().press(code, character, hands.channel()) || is_changed;
}

void EditorView::release_computer_key(uint32_t code) {
    hands.computer_keys().release(code);
}

} // namespace tarquil
