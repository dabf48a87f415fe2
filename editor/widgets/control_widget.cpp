// What all widgets for one controller share.

#include "editor/widgets/control_widget.h"

#include <algorithm>
#include <cmath>

#include "common/characters.h"
#include "editor/widgets/menu.h"
#include "editor/widgets/text_entry.h"
#include "softsynth/parameters/control_help.h"
#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/control_text.h"

namespace tarquil {

namespace {

constexpr int LARGE_STEP = 10;

// With the effect's own name of a parameter: "Mono effect 1 drive".
std::string full_name(unsigned number, const ControllerBytes& bytes) {
    std::string name = find_controller(number)->name;
    std::string label = control_label(number, bytes, "");
    const size_t place = name.find("parameter ");
    if (label.empty() || place == std::string::npos)
        return name;
    if (!label.starts_with("LFO"))
        label[0] = lower_case(label[0]);
    return name.substr(0, place) + label;
}

} // namespace

void reset_control(EditorModel& model, unsigned number) {
    model.choose_value(number, default_byte(*find_controller(number)));
}

std::string shown_text(const EditorModel& model, unsigned number, int byte) {
    const EditorState& state = model.get_state();
    return control_text(number, byte, state.bytes, state.tempo_sync);
}

std::string control_remarks(const EditorModel& model, unsigned number) {
    std::string text;
    const std::string reason = why_without_effect(number, model.get_state().bytes);
    if (!reason.empty())
        text += "\nNo effect now: " + reason;
    if (acts_from_next_note(number))
        text += "\nHeard from the next note on";
    if (const std::optional<unsigned> by = model.get_state().learned.find(number))
        text += "\nMoved by MIDI controller " + std::to_string(*by);
    return text;
}

std::string control_tooltip(EditorModel& model, unsigned number) {
    const ControllerInfo& info = *find_controller(number);
    const ControllerBytes& bytes = model.get_state().bytes;
    std::string text =
        full_name(number, bytes) + ": " + shown_text(model, number, model.value(number));
    const std::string help = control_help(number, bytes);
    if (!help.empty())
        text += "\n" + help;
    text += control_remarks(model, number);
    const int parameter = model.get_synth().host_parameter(number);
    if (parameter != 0)
        text += std::string("\n") + info.key + ", host parameter " + std::to_string(parameter);
    return text;
}

bool ControlWidget::press(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    if (pointer.button == Pointer::Button::RIGHT) {
        open_context_menu(host, pointer.at);
        return false;
    }
    if (pointer.button != Pointer::Button::LEFT)
        return false;
    if (pointer.is_double) {
        reset(model);
        return false;
    }
    model.begin_gesture(find_controller(number)->name);
    dragged_value.start(model.value(number));
    last = pointer.at;
    return true;
}

void ControlWidget::drag(UiHost& host, const Pointer& pointer) {
    const ControllerInfo& info = *find_controller(number);
    const double way = drag_way(last, pointer.at) * steps_per_way() * drag_speed(pointer);
    last = pointer.at;
    host.get_model().set_value(number,
                               dragged_value.move(way, info.choices.first, info.choices.last));
}

void ControlWidget::release(UiHost& host) {
    host.get_model().end_gesture();
}

void ControlWidget::step(UiHost& host, int steps) {
    EditorModel& model = host.get_model();
    const ControllerInfo& info = *find_controller(number);
    const int value =
        std::clamp(model.value(number) + steps, int(info.choices.first), int(info.choices.last));
    if (value != model.value(number))
        model.turn_value(number, value);
}

void ControlWidget::wheel(UiHost& host, const Pointer& pointer, double steps) {
    const bool is_list = !find_controller(number)->choices.labels.empty();
    // A list has nothing finer than its items.
    Pointer turned = pointer;
    turned.shift = pointer.shift && !is_list;
    step(host, wheel_steps.turn(turned, steps, is_list ? 1.0 : 2.0));
}

bool ControlWidget::press_key(UiHost& host, const KeyEvent& key) {
    switch (key.key) {
    case Key::UP:
    case Key::RIGHT:
        step(host, 1);
        return true;
    case Key::DOWN:
    case Key::LEFT:
        step(host, -1);
        return true;
    case Key::PAGE_UP:
        step(host, LARGE_STEP);
        return true;
    case Key::PAGE_DOWN:
        step(host, -LARGE_STEP);
        return true;
    case Key::HOME:
        step(host, -127);
        return true;
    case Key::END:
        step(host, 127);
        return true;
    case Key::DEL:
        reset(host.get_model());
        return true;
    case Key::ENTER:
        if (meaning_of(number, host.get_model().get_state().bytes).choices.empty())
            open_entry(host);
        else
            open_choices(host);
        return true;
    default:
        return false;
    }
}

std::string ControlWidget::tooltip(UiHost& host) {
    return control_tooltip(host.get_model(), number);
}

// The tooltip's first line is name and value.
Spoken ControlWidget::spoken(UiHost& host) {
    EditorModel& model = host.get_model();
    const ControllerBytes& bytes = model.get_state().bytes;
    const std::string lines = tooltip(host);
    Spoken spoken = spoken_of_tooltip(lines);
    spoken.role = SpokenRole::SLIDER;
    spoken.name = full_name(number, bytes);
    spoken.text = text_now(model);
    spoken.is_enabled = meaning_of(number, bytes).is_used;
    const ControllerChoices& choices = find_controller(number)->choices;
    const double reach = choices.last - choices.first;
    spoken.range = SpokenRange{choices.first + place(model) * reach, double(choices.first),
                               double(choices.last), 1.0};
    spoken.set = [this, &host, first = choices.first, reach](double value) {
        set_place(host.get_model(), std::clamp((value - first) / reach, 0.0, 1.0));
    };
    spoken.press = [this, &host] { press_key(host, {Key::ENTER, "", false, false}); };
    return spoken;
}

void ControlWidget::draw_note_mark(Canvas& canvas, Point at) const {
    constexpr double RADIUS = 1.8;
    constexpr double STEM = 6.0;
    if (!acts_from_next_note(number))
        return;
    canvas.disc(at, RADIUS, theme::TEXT_DIM);
    canvas.line({at.x + RADIUS - 0.4, at.y}, {at.x + RADIUS - 0.4, at.y - STEM}, theme::TEXT_DIM);
}

Rect ControlWidget::entry_area() const {
    const double width = std::max(area.w, 84.0);
    return {area.center().x - width / 2, area.bottom() - 20, width, 20};
}

void ControlWidget::reset(EditorModel& model) {
    reset_control(model, number);
}

std::string ControlWidget::text_now(const EditorModel& model) const {
    return shown_text(model, number, model.value(number));
}

std::string ControlWidget::default_text(const EditorModel& model) const {
    return shown_text(model, number, default_byte(*find_controller(number)));
}

std::string ControlWidget::take_text(EditorModel& model, const std::string& text) {
    const EditorState& state = model.get_state();
    const std::optional<int> value = parse_control(number, text, state.bytes, state.tempo_sync);
    if (!value)
        return control_range(number, state.bytes);
    model.choose_value(number, *value);
    return "";
}

double ControlWidget::place(const EditorModel& model) const {
    const ControllerChoices& range = find_controller(number)->choices;
    return double(model.value(number) - range.first) / (range.last - range.first);
}

void ControlWidget::set_place(EditorModel& model, double part) {
    const ControllerChoices& range = find_controller(number)->choices;
    model.choose_value(number, int(std::lround(part * (range.last - range.first))) + range.first);
}

void ControlWidget::open_entry(UiHost& host) {
    host.open_overlay(std::make_unique<TextEntry>(
        entry_area(), find_controller(number)->name, text_now(host.get_model()),
        [this, &host](const std::string& text) {
            const std::string would_do = take_text(host.get_model(), text);
            if (!would_do.empty())
                host.show_message("\"" + text + "\" is no value here: " + would_do + " would do");
            return would_do.empty();
        }));
}

void ControlWidget::open_choices(UiHost& host) {
    EditorModel& model = host.get_model();
    const ControllerInfo& info = *find_controller(number);
    const ControllerBytes& bytes = model.get_state().bytes;
    std::vector<MenuItem> items;
    const std::string shown = control_text(number, model.value(number), bytes);
    for (int byte = info.choices.first; byte <= info.choices.last; byte++) {
        std::string text = control_text(number, byte, bytes);
        // Bytes that wrap round a list of choices show it once.
        if (byte > info.choices.first && text == control_text(number, info.choices.first, bytes))
            break;
        const unsigned control = number;
        items.push_back({text, text == shown, true,
                         [&host, control, byte] { host.get_model().choose_value(control, byte); }});
    }
    host.open_overlay(std::make_unique<Menu>(area, std::move(items)));
}

void ControlWidget::add_learning(UiHost& host, std::vector<MenuItem>& items) const {
    if (!can_be_learned(number))
        return;
    const unsigned control = number;
    items.push_back({"Learn a MIDI controller", false, true, [&host, control] {
                         host.get_model().start_learning(control);
                         host.show_message("Move a MIDI controller for " +
                                           std::string(find_controller(control)->name) +
                                           "; a click ends the waiting");
                     }});
    const std::optional<unsigned> by = host.get_model().get_state().learned.find(number);
    if (by)
        items.push_back({"Forget MIDI controller " + std::to_string(*by), false, true,
                         [&host, controller = *by] {
                             EditorModel& model = host.get_model();
                             LearnedControls learned = model.get_state().learned;
                             learned.set(controller, std::nullopt);
                             model.set_learned("Forget MIDI controller", learned);
                         }});
}

void ControlWidget::open_context_menu(UiHost& host, Point at) {
    EditorModel& model = host.get_model();
    std::vector<MenuItem> items;
    items.push_back({"Reset to " + default_text(model), false, true,
                     [this, &host] { reset(host.get_model()); }});
    items.push_back({"Copy value", false, true,
                     [this, &host] { host.get_model().copied_value = place(host.get_model()); }});
    items.push_back({"Paste value", false, model.copied_value.has_value(), [this, &host] {
                         set_place(host.get_model(), *host.get_model().copied_value);
                     }});
    if (meaning_of(number, model.get_state().bytes).choices.empty())
        items.push_back({"Type a value\u2026", false, true, [this, &host] { open_entry(host); }});
    add_learning(host, items);
    host.open_overlay(std::make_unique<Menu>(Rect{at.x, at.y, 0, 0}, std::move(items)));
}

} // namespace tarquil
