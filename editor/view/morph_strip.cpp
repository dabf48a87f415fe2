// The way from version A of a program to version B, in the place of the tabs.

#include "editor/view/morph_strip.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "common/characters.h"
#include "common/number_text.h"
#include "editor/kit/dragged_value.h"
#include "editor/kit/window_size.h"
#include "editor/view/header.h"
#include "editor/widgets/menu.h"
#include "editor/widgets/slider.h"
#include "editor/widgets/text_entry.h"

namespace tarquil {

namespace {

constexpr Rect STRIP{0, HEADER_HEIGHT, WINDOW_WIDTH, 34};
constexpr double STRIP_MARGIN = 12.0;
constexpr double STRIP_SPACE = 6.0;
constexpr double TITLE_WIDTH = 56.0;
constexpr double END_WIDTH = 16.0; // the names of the slider's ends
constexpr double OVER_WIDTH = 46.0;
constexpr double PERCENT = 100.0;

// From the slider's far end to the strip's.
constexpr double PART_WIDTHS[] = {0, 56, 72, 86, 60, 66, 60};

constexpr const char* OFFERED_LENGTHS[] = {"1 s", "2 s", "4 s", "8 s", "16 s", "30 s",
                                           "1/4", "1/2", "1/1", "2/1", "4/1"};

} // namespace

void open_morph(UiHost& host) {
    if (!host.get_model().start_morph()) {
        host.show_message("A and B are the same still: click A, change the sound, then morph");
        return;
    }
    host.open_overlay(std::make_unique<MorphStrip>(host));
    host.show_message("Drag from A to B or press Play; Keep takes what you hear into the program, "
                      "Cancel leaves it as it was");
}

Rect MorphStrip::area_of(Part part) {
    Rect row = STRIP.inset(STRIP_MARGIN, 4);
    for (int i = KEEP; i > int(part); i--) {
        row.cut_right(PART_WIDTHS[i]);
        row.cut_right(i == LENGTH ? OVER_WIDTH : STRIP_SPACE);
    }
    if (part != SLIDER)
        return row.cut_right(PART_WIDTHS[part]);
    row.cut_left(TITLE_WIDTH + END_WIDTH);
    row.cut_right(END_WIDTH);
    return row;
}

double MorphStrip::position() const {
    return host.get_model().morph_position().value_or(0.0);
}

std::string MorphStrip::text_of(Part part) const {
    const ViewState& state = host.get_view_state();
    switch (part) {
    case VALUE:
        return trimmed_number(PERCENT * position(), 0) + " %";
    case LENGTH:
        return state.morph_length.text() + " \u25be";
    case SWING:
        return state.morph_swings ? "To and fro" : "Once";
    case PLAY:
        return run.is_running() ? "Stop" : "Play";
    case DROP:
        return "Cancel";
    default:
        return "Keep";
    }
}

void MorphStrip::draw(Canvas& canvas) {
    canvas.fill(STRIP, theme::PANEL);
    canvas.line({STRIP.x, STRIP.bottom()}, {STRIP.right(), STRIP.bottom()}, theme::ACCENT, 1);
    Rect row = STRIP.inset(STRIP_MARGIN, 4);
    canvas.text(row.cut_left(TITLE_WIDTH), "Morph",
                {theme::NORMAL, theme::TEXT, Align::LEFT, Weight::BOLD});
    const Rect slider = area_of(SLIDER);
    const TextStyle end{theme::NORMAL, theme::TEXT_MUTED, Align::CENTER};
    canvas.text({slider.x - END_WIDTH - 4, slider.y, END_WIDTH, slider.h}, "A", end);
    canvas.text({slider.right() + 4, slider.y, END_WIDTH, slider.h}, "B", end);
    const Rect slot = slider.inset(SLIDER_HANDLE_RADIUS, (slider.h - SLIDER_SLOT_HEIGHT) / 2);
    draw_slider(canvas, slot,
                {.from = slot.x,
                 .handle = slot.x + slot.w * position(),
                 .is_bright = is_held || hovered == SLIDER});
    canvas.text(area_of(VALUE), text_of(VALUE), {theme::SMALL, theme::TEXT, Align::RIGHT});
    const Rect length = area_of(LENGTH);
    canvas.text({length.x - OVER_WIDTH, length.y, OVER_WIDTH - 4, length.h}, "over",
                {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
    for (const Part part : {LENGTH, SWING, PLAY, DROP, KEEP}) {
        const Rect area = area_of(part);
        const bool is_lit = part == KEEP || (part == PLAY && run.is_running());
        canvas.fill(area,
                    is_lit            ? theme::ACCENT_DIM
                    : hovered == part ? theme::HOVER
                                      : theme::CONTROL,
                    4);
        canvas.frame(area, theme::OUTLINE, 4);
        canvas.text(area.inset(4, 0), text_of(part), {theme::NORMAL, theme::TEXT, Align::CENTER});
    }
}

Spoken MorphStrip::spoken() {
    Spoken dialog{SpokenRole::DIALOG, "Morph from A to B"};
    dialog.area = STRIP;
    Spoken slider{SpokenRole::SLIDER, "Place"};
    slider.text = text_of(VALUE);
    slider.area = area_of(SLIDER);
    slider.is_focused = true;
    slider.range = SpokenRange{PERCENT * position(), 0.0, PERCENT, 1.0};
    slider.set = [this](double percent) { set_by_hand(percent / PERCENT); };
    slider.press = [this] { act(VALUE); };
    dialog.items.push_back(std::move(slider));
    for (const Part part : {LENGTH, SWING, PLAY, DROP, KEEP}) {
        const bool is_length = part == LENGTH;
        Spoken button{SpokenRole::BUTTON, is_length ? "Length" : text_of(part)};
        button.text = is_length ? host.get_view_state().morph_length.text() : "";
        button.area = area_of(part);
        button.press = [this, part] { act(part); };
        dialog.items.push_back(std::move(button));
    }
    return dialog;
}

void MorphStrip::set(double new_position) {
    host.get_model().set_morph(new_position);
}

void MorphStrip::set_by_hand(double new_position) {
    run.stop();
    set(new_position);
}

bool MorphStrip::pass_time(double seconds) {
    EditorModel& model = host.get_model();
    if (!model.morph_position()) { // the program has been changed under it
        model.end_gesture();
        finish();
        return true;
    }
    if (!run.is_running())
        return false;
    const double length = host.get_view_state().morph_length.seconds(host.get_meters().tempo);
    set(run.advance(seconds / length));
    return true;
}

void MorphStrip::choose_length() {
    std::vector<MenuItem> items;
    const std::string now = host.get_view_state().morph_length.text();
    for (const char* const offered : OFFERED_LENGTHS)
        items.push_back({offered, now == offered, true, [this, offered] {
                             host.get_view_state().morph_length = *parse_morph_length(offered);
                         }});
    items.push_back({"Another\u2026", false, true, [this] { type_length(); }});
    host.open_overlay(std::make_unique<Menu>(area_of(LENGTH), std::move(items)));
}

void MorphStrip::type_length() {
    host.open_overlay(std::make_unique<TextEntry>(
        area_of(LENGTH), "Length", host.get_view_state().morph_length.text(),
        [this](const std::string& text) {
            const std::optional<MorphLength> typed = parse_morph_length(text);
            if (typed)
                host.get_view_state().morph_length = *typed;
            else
                host.show_message("\"" + text +
                                  "\" is no length here: 0.1 s to 600 s, or a note such as 1/4 or "
                                  "2/1 would do");
            return typed.has_value();
        }));
}

void MorphStrip::type_position() {
    host.open_overlay(std::make_unique<TextEntry>(
        area_of(VALUE), "Place", text_of(VALUE), [this](const std::string& text) {
            const std::string_view number = trimmed(text);
            const bool is_number = !number.empty() && is_digit(number.front());
            const double percent = is_number ? text_to_number(number) : -1.0;
            if (percent < 0.0 || percent > PERCENT) {
                host.show_message("\"" + text + "\" is no place here: 0 % to 100 % would do");
                return false;
            }
            set_by_hand(percent / PERCENT);
            return true;
        }));
}

void MorphStrip::act(Part part) {
    ViewState& state = host.get_view_state();
    run.swings = state.morph_swings;
    switch (part) {
    case VALUE:
        type_position();
        break;
    case LENGTH:
        choose_length();
        break;
    case SWING:
        state.morph_swings = run.swings = !state.morph_swings;
        if (run.is_running())
            run.start(position());
        break;
    case PLAY:
        if (run.is_running())
            run.stop();
        else
            run.start(position());
        break;
    case DROP:
        host.get_model().drop_morph();
        finish();
        break;
    case KEEP:
        host.show_message("Kept at " + text_of(VALUE) + " of the way from A to B",
                          MessageKind::DONE);
        host.get_model().keep_morph();
        finish();
        break;
    default:
        break;
    }
}

void MorphStrip::press(const Pointer& pointer) {
    if (pointer.button != Pointer::Button::LEFT)
        return;
    move(pointer);
    if (hovered != SLIDER) {
        act(hovered);
        return;
    }
    is_held = true;
    move(pointer);
}

void MorphStrip::move(const Pointer& pointer) {
    if (is_held) {
        const Rect slot = area_of(SLIDER).inset(SLIDER_HANDLE_RADIUS, 0);
        set_by_hand((pointer.at.x - slot.x) / slot.w);
        return;
    }
    hovered = NUM_PARTS;
    for (int part = SLIDER; part < NUM_PARTS; part++) {
        if (area_of(Part(part)).contains(pointer.at))
            hovered = Part(part);
    }
}

void MorphStrip::wheel(const Pointer& pointer, double steps) {
    set_by_hand(position() + 0.01 * steps * drag_speed(pointer));
}

void MorphStrip::press_key(const KeyEvent& key) {
    const double step = key.shift ? 0.001 : 0.01;
    if (key.key == Key::ESCAPE)
        act(DROP);
    else if (key.key == Key::ENTER)
        act(KEEP);
    else if (key.key == Key::CHARACTER && key.text == " ")
        act(PLAY);
    else if (key.key == Key::LEFT || key.key == Key::DOWN)
        set_by_hand(position() - step);
    else if (key.key == Key::RIGHT || key.key == Key::UP)
        set_by_hand(position() + step);
    else if (key.key == Key::HOME || key.key == Key::END)
        set_by_hand(key.key == Key::HOME ? 0.0 : 1.0);
}

} // namespace tarquil
