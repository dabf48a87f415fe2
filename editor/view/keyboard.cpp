// The keyboard along the bottom.

#include "editor/view/keyboard.h"

#include <cmath>

#include "editor/kit/window_size.h"
#include "editor/view/hand_wheel.h"
#include "editor/view/piano_keys.h"
#include "editor/widgets/button.h"

namespace tarquil {

namespace {

constexpr Rect LEFT_SIDE{12, 684, 164, 84};
constexpr const char* NO_PEDALS =
    "\nThe native dialect has none: the page Bank chooses General MIDI";

// A button whose light follows what MIDI does.
class LiveButton : public Button {
  public:
    LiveButton(const Rect& widget_area, std::function<Look(UiHost&)> look_now,
               std::function<void(UiHost&)> on_press, std::string tip)
        : Button(widget_area, look_now, std::move(on_press), std::move(tip)),
          look(std::move(look_now)) {}

    void draw(Canvas& canvas, UiHost& host, const WidgetState& state) override {
        was_lit = look(host).is_lit.value_or(false);
        Button::draw(canvas, host, state);
    }
    [[nodiscard]] bool shows_meters() const override { return true; }
    std::vector<Rect> moved_areas(UiHost& host) override {
        return look(host).is_lit == was_lit ? std::vector<Rect>() : std::vector<Rect>{area};
    }

  private:
    const std::function<Look(UiHost&)> look;
    bool was_lit = false;
};

std::string percent_text(double part) {
    return std::to_string(std::lround(part * 100)) + " %";
}

void add_switches(Page& page, Rect column, Hands& hands) {
    page.add<Button>(
        column.cut_top(24),
        [&hands](UiHost& /*host*/) {
            return Button::Look{"Keys", true, hands.plays_computer_keys()};
        },
        [&hands](UiHost& /*host*/) { hands.set_plays_computer_keys(!hands.plays_computer_keys()); },
        "The computer's keys play: A to ; are the white keys from C on, W to P the black ones, Z "
        "and X change the octave\nIn a host they come here as long as this is on");
    column.cut_top(6);
    page.add<LiveButton>(
        column.cut_top(24),
        [&hands](UiHost& /*host*/) {
            return Button::Look{"Sustain", hands.has_modulation_and_sustain(),
                                hands.shown_channel().is_sustained};
        },
        [&hands](UiHost& /*host*/) { hands.set_sustain(!hands.shown_channel().is_sustained); },
        std::string("The channel's sustain pedal: notes ring on while it is down") + NO_PEDALS);
}

void add_octaves(Page& page, Rect row, KeyLayout& layout) {
    page.add<Button>(
        row.cut_left(36), "\u2039", [&layout](UiHost& /*host*/) { layout.scroll(-1); },
        "An octave down");
    page.add<Button>(
        row.cut_right(36), "\u203a", [&layout](UiHost& /*host*/) { layout.scroll(1); },
        "An octave up");
}

void add_wheels(Page& page, Rect area, Hands& hands) {
    HandWheel::Use bend;
    bend.label = "Bend";
    bend.is_centred = true;
    bend.is_enabled = [] { return true; };
    // Half way is the centre, which is not the middle of the range.
    bend.get = [&hands] { return hands.shown_channel().bend / (2.0 * EditorKeys::BEND_CENTRE); };
    bend.set = [&hands](double value) {
        hands.bend(std::min(unsigned(std::lround(value * 2.0 * EditorKeys::BEND_CENTRE)),
                            EditorKeys::MAX_BEND));
    };
    bend.let_go = [&hands] { hands.let_bend_go(); };
    bend.tooltip = [&hands] {
        const double part = hands.shown_channel().bend / double(EditorKeys::BEND_CENTRE) - 1.0;
        return "Pitch bend: " + percent_text(part) +
               " of its range\nSprings back when it is let go";
    };
    page.add<HandWheel>(area.cut_left(38), bend);
    area.cut_left(2);
    HandWheel::Use modulation;
    modulation.label = "Mod";
    modulation.is_enabled = [&hands] { return hands.has_modulation_and_sustain(); };
    modulation.get = [&hands] { return hands.shown_channel().modulation / 127.0; };
    modulation.set = [&hands](double value) {
        hands.set_modulation(unsigned(std::lround(value * 127.0)));
    };
    modulation.tooltip = [&hands] {
        return hands.has_modulation_and_sustain()
                   ? "Modulation wheel: " + percent_text(hands.shown_channel().modulation / 127.0)
                   : std::string("Modulation wheel") + NO_PEDALS;
    };
    page.add<HandWheel>(area.cut_left(38), modulation);
}

} // namespace

Page make_keyboard(Hands& hands, KeyLayout& layout) {
    Page page;
    Rect left = LEFT_SIDE;
    Rect switches = left.cut_left(78);
    add_octaves(page, switches.cut_bottom(24), layout);
    add_switches(page, switches, hands);
    left.cut_left(4);
    add_wheels(page, left, hands);
    page.add<PianoKeys>(PIANO_AREA, hands, layout);
    return page;
}

void add_keyboard_switch(Page& page, const std::function<bool()>& is_shown,
                         const std::function<void(bool)>& show) {
    page.add<Button>(
        Rect{WINDOW_WIDTH - 12 - KEYBOARD_SWITCH_WIDTH, 653, KEYBOARD_SWITCH_WIDTH, 24},
        [is_shown](UiHost& /*host*/) {
            return Button::Look{is_shown() ? "Hide keyboard" : "Show keyboard"};
        },
        [is_shown, show](UiHost& /*host*/) { show(!is_shown()); }, "The keyboard along the bottom");
}

} // namespace tarquil
