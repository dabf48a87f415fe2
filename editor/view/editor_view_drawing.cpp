// The whole editor as a picture: how it is drawn.

#include "editor/view/editor_view.h"

#include "common/assertion.h"
#include "editor/view/header.h"
#include "editor/view/section_menu.h"
#include "editor/view/tooltip.h"
#include "editor/widgets/pair_slider.h"

namespace tarquil {

namespace {

constexpr double STATUS_HEIGHT = 24.0;

} // namespace

WidgetState EditorView::state_of(const Widget* widget) const {
    const bool is_free = overlays.empty();
    return {is_free && widget == hovered && (pressed == nullptr || pressed == widget),
            widget == pressed, is_free && has_keyboard && widget == focused};
}

void EditorView::draw_ground(Canvas& canvas) {
    constexpr double RADIUS = 6.0;
    // No pixel is worth filling twice: this is what a large window spends most on.
    std::vector<Rect> panels;
    for (const Panel& panel : pages[current_page].panels)
        panels.push_back(panel.area);
    canvas.fill_around({0, HEADER_HEIGHT, WINDOW_WIDTH, WINDOW_HEIGHT - HEADER_HEIGHT}, panels,
                       RADIUS, theme::BACKGROUND);
    canvas.fill({0, WINDOW_HEIGHT, WINDOW_WIDTH, KEYBOARD_HEIGHT}, theme::HEADER);
    canvas.fill({0, 0, WINDOW_WIDTH, HEADER_HEIGHT}, theme::HEADER);
    for (const Rect& panel : panels) {
        canvas.fill(panel, theme::PANEL, RADIUS);
        if (get_theme() == ThemeKind::HIGH_CONTRAST) // where it is as dark as the ground
            canvas.frame(panel, theme::GRID_STRONG, RADIUS);
    }
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
    Canvas canvas(context, drawn_store, get_theme());
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
    Canvas canvas(context, drawn_store, get_theme());
    return draw_meters(canvas);
}

} // namespace tarquil
