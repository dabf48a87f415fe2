// The note at which waves and key-following filters are drawn.

#include "editor/widgets/note_chooser.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

constexpr int NOTES_IN_OCTAVE = 12;

void step(UiHost& host, int notes) {
    int& note = host.get_view_state().plot_note;
    note = std::clamp(note + notes, 0, 127);
}

} // namespace

std::string note_name(int note) {
    static constexpr const char* NAMES[] = {"C",  "C#", "D",  "D#", "E",  "F",
                                            "F#", "G",  "G#", "A",  "A#", "B"};
    return NAMES[note % NOTES_IN_OCTAVE] + std::to_string(note / NOTES_IN_OCTAVE - 1);
}

void NoteChooser::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    canvas.fill(area, state.is_hovered ? theme::HOVER : theme::CONTROL, 4);
    canvas.text(area.inset(9, 0), "Drawn at", {theme::SMALL, theme::TEXT_MUTED});
    canvas.text(area.inset(9, 0), note_name(host.get_view_state().plot_note),
                {theme::NORMAL, theme::TEXT, Align::RIGHT, Weight::BOLD});
    canvas.frame(area, state.is_focused ? theme::FOCUS : theme::OUTLINE, 4);
}

bool NoteChooser::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button != Pointer::Button::LEFT)
        return false;
    if (pointer.is_double)
        host.get_view_state().plot_note = ViewState().plot_note;
    dragged_note = host.get_view_state().plot_note;
    last = pointer.at;
    return true;
}

void NoteChooser::drag(UiHost& host, const Pointer& pointer) {
    constexpr double NOTES_PER_UNIT = 0.2;
    dragged_note +=
        ((pointer.at.x - last.x) - (pointer.at.y - last.y)) * NOTES_PER_UNIT * drag_speed(pointer);
    last = pointer.at;
    host.get_view_state().plot_note = std::clamp(int(std::lround(dragged_note)), 0, 127);
}

void NoteChooser::wheel(UiHost& host, const Pointer& pointer, double steps) {
    step(host, wheel_steps.turn(pointer, steps, 1.0));
}

bool NoteChooser::press_key(UiHost& host, const KeyEvent& key) {
    const bool is_up = key.key == Key::UP || key.key == Key::RIGHT;
    if (!is_up && key.key != Key::DOWN && key.key != Key::LEFT)
        return false;
    step(host, is_up ? 1 : -1);
    return true;
}

Spoken NoteChooser::spoken(UiHost& host) {
    int& note = host.get_view_state().plot_note;
    Spoken spoken{SpokenRole::SLIDER, "Drawn at"};
    spoken.text = note_name(note);
    spoken.help = tooltip(host);
    spoken.range = SpokenRange{double(note), 0.0, 127.0, 1.0};
    spoken.set = [&note](double value) { note = int(std::lround(std::clamp(value, 0.0, 127.0))); };
    return spoken;
}

} // namespace tarquil
