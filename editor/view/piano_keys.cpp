// The keys of the keyboard.

#include "editor/view/piano_keys.h"

#include "editor/widgets/note_chooser.h"

namespace tarquil {

namespace {

constexpr Color WHITE = theme::WHITE_KEY;
constexpr Color BLACK = theme::BLACK_KEY;
constexpr Color LABEL = theme::KEY_LABEL;
constexpr double KEY_LABEL_HEIGHT = 15.0;

// A sound on another channel than the one that is played here.
constexpr double ELSEWHERE = 0.55;

} // namespace

PianoKeys::Lights PianoKeys::lights() const {
    std::bitset<EditorKeys::NUM_KEYS> elsewhere;
    for (const EditorKeys::Channel& channel : hands.shown().channels)
        elsewhere |= channel.keys;
    Lights all{};
    for (unsigned key = 0; key < all.size(); key++) {
        if (hands.shown_channel().keys[key] || hands.is_under_pointer(key))
            all[key] = Light::HERE;
        else if (elsewhere[key])
            all[key] = Light::ELSEWHERE;
    }
    return all;
}

std::vector<Rect> PianoKeys::moved_areas(UiHost& /*host*/) {
    const Lights now = lights();
    std::vector<Rect> moved;
    for (int key = layout.first(); key <= layout.last(); key++) {
        if (now[size_t(key)] != drawn[size_t(key)])
            moved.push_back(layout.area_of(key));
    }
    return moved;
}

void PianoKeys::draw(Canvas& canvas, UiHost& /*host*/, const WidgetState& /*state*/) {
    drawn = lights();
    canvas.fill(area, BLACK); // between the white ones
    for (const bool is_black : {false, true}) {
        for (int key = layout.first(); key <= layout.last(); key++) {
            if (KeyLayout::is_black(key) == is_black)
                draw_key(canvas, key, drawn[size_t(key)]);
        }
    }
}

void PianoKeys::draw_key(Canvas& canvas, int key, Light light) const {
    const bool is_black = KeyLayout::is_black(key);
    Rect shape = layout.area_of(key);
    if (!is_black)
        shape.w -= 1;
    canvas.fill(shape, is_black ? BLACK : WHITE);
    if (is_black)
        shape = shape.inset(1.5, 0).cut_top(shape.h - 1.5);
    if (light == Light::HERE)
        canvas.fill(shape, theme::ACCENT);
    else if (light == Light::ELSEWHERE)
        canvas.fill(shape, theme::WARM, 0, ELSEWHERE);
    else if (is_black)
        canvas.fill(shape, theme::CONTROL);
    if (is_black)
        return;
    const Rect label = shape.cut_bottom(KEY_LABEL_HEIGHT);
    const char character = hands.computer_character(key);
    if (character != 0)
        canvas.text(label, std::string(1, character),
                    {theme::NORMAL, LABEL, Align::CENTER, Weight::BOLD});
    else if (key % 12 == 0)
        canvas.text(label, note_name(key), {theme::SMALL, LABEL, Align::CENTER});
}

void PianoKeys::strike(int key, Point at) {
    pressed_key = key;
    hands.strike(unsigned(key), layout.velocity_at(key, at));
}

bool PianoKeys::press(UiHost& /*host*/, const Pointer& pointer) {
    const std::optional<int> key = layout.key_at(pointer.at);
    if (pointer.button != Pointer::Button::LEFT || !key)
        return false;
    strike(*key, pointer.at);
    return true;
}

void PianoKeys::drag(UiHost& /*host*/, const Pointer& pointer) {
    const std::optional<int> key = layout.key_at(pointer.at);
    if (key == pressed_key)
        return;
    if (key)
        strike(*key, pointer.at);
    else
        hands.lift();
    pressed_key = key;
}

void PianoKeys::release(UiHost& /*host*/) {
    hands.lift();
    pressed_key.reset();
}

void PianoKeys::hover(UiHost& /*host*/, Point at) {
    hovered_key = layout.key_at(at).value_or(hovered_key);
}

void PianoKeys::wheel(UiHost& /*host*/, const Pointer& /*pointer*/, double steps) {
    if (!pressed_key)
        layout.scroll(steps > 0 ? 1 : -1);
}

std::string PianoKeys::tooltip(UiHost& /*host*/) {
    return note_name(hovered_key) + ", key " + std::to_string(hovered_key) + " of channel " +
           std::to_string(hands.channel() + 1) +
           "\nThe lower a key is pressed the harder it is struck; drag for a glissando, wheel for "
           "other octaves";
}

} // namespace tarquil
