// Which controllers of a MIDI keyboard move which controls of a bank.

#include "instrument/learned_controls.h"

#include <charconv>
#include <cstdlib>

#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

constexpr std::string_view LEARN_PREFIX = "learn";
constexpr unsigned LAST_BYTE = 127;

// The number at the start of `text`, which loses it, written as this program does; nothing for one
// beyond `last`.
std::optional<unsigned> take_number(std::string_view& text, unsigned last) {
    unsigned number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = size_t(rest - text.data());
    if (error != std::errc() || number > last || (text.front() == '0' && length > 1))
        return std::nullopt;
    text.remove_prefix(length);
    return number;
}

bool take_blank(std::string_view& text) {
    const bool is_blank = text.starts_with(' ');
    text.remove_prefix(is_blank ? 1 : 0);
    return is_blank;
}

} // namespace

int LearnedControl::value(unsigned data) const {
    const int way = int(last) - int(first);
    // Rounded in the same way up and down.
    const int part = (2 * std::abs(way) * int(data) + int(LAST_BYTE)) / int(2 * LAST_BYTE);
    return int(first) + (way < 0 ? -part : part);
}

bool is_learnable(unsigned midi_controller) {
    switch (midi_controller) {
    case 0: // bank
    case 32:
    case 6: // data entry
    case 38:
        return false;
    default:
        // 96 to 101: data steps and parameter numbers; from 120 on: modes
        return midi_controller < 96 || (midi_controller > 101 && midi_controller < 120);
    }
}

bool can_be_learned(unsigned target) {
    return find_controller(target) != nullptr && target != CTRL_PITCH_BEND_MSB &&
           target != CTRL_PITCH_BEND_LSB;
}

LearnedControl whole_range(unsigned target) {
    const ControllerChoices& range = find_controller(target)->choices;
    // The top of an amount is no amount.
    const uint8_t last =
        is_modulation_amount(target) ? uint8_t(MULTIPLYING_AMOUNT - 1) : range.last;
    return {uint8_t(target), range.first, last};
}

void LearnedControls::set(unsigned midi_controller, const std::optional<LearnedControl>& control) {
    if (!control || (is_learnable(midi_controller) && can_be_learned(control->target)))
        controls[midi_controller] = control;
}

void LearnedControls::learn(unsigned midi_controller, unsigned target) {
    if (!is_learnable(midi_controller) || !can_be_learned(target))
        return;
    LearnedControl learned = whole_range(target);
    for (auto& control : controls) {
        if (control && control->target == target) {
            learned = *control; // with the range that it had
            control.reset();
        }
    }
    controls[midi_controller] = learned;
}

std::optional<unsigned> LearnedControls::find(unsigned target) const {
    for (unsigned i = 0; i < controls.size(); i++) {
        if (controls[i] && controls[i]->target == target)
            return i;
    }
    return std::nullopt;
}

std::string learn_key(unsigned midi_controller) {
    return std::string(LEARN_PREFIX) + std::to_string(midi_controller);
}

std::optional<unsigned> midi_controller_of_key(std::string_view key) {
    if (!key.starts_with(LEARN_PREFIX))
        return std::nullopt;
    key.remove_prefix(LEARN_PREFIX.size());
    const std::optional<unsigned> number = take_number(key, NUM_MIDI_CONTROLLERS - 1);
    return number && key.empty() && is_learnable(*number) ? number : std::nullopt;
}

std::string learned_text(const LearnedControl& control) {
    return std::string(find_controller(control.target)->key) + " " + std::to_string(control.first) +
           " " + std::to_string(control.last);
}

std::optional<LearnedControl> parse_learned(std::string_view text) {
    const size_t end = text.find(' ');
    const ControllerInfo* const info = find_controller_by_key(text.substr(0, end));
    if (info == nullptr || end == std::string_view::npos || !can_be_learned(info->number))
        return std::nullopt;
    text.remove_prefix(end);
    std::optional<unsigned> bytes[2];
    for (std::optional<unsigned>& byte : bytes) {
        if (!take_blank(text))
            return std::nullopt;
        byte = take_number(text, LAST_BYTE);
        if (!byte)
            return std::nullopt;
    }
    if (!text.empty())
        return std::nullopt;
    return LearnedControl{uint8_t(info->number), uint8_t(*bytes[0]), uint8_t(*bytes[1])};
}

} // namespace tarquil
