// Controllers as they are shown and typed.

#include "softsynth/parameters/control_text.h"

#include <cmath>
#include <limits>

#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/nearest_byte.h"
#include "softsynth/parameters/note_length.h"
#include "softsynth/parameters/quantity_text.h"
#include "softsynth/parameters/shown_quantity.h"

namespace tarquil {

namespace {

// A parameter that the type of its effect has no use for is a byte.
bool is_bare(unsigned number, const ControlMeaning& meaning) {
    const auto is_of = [number](const EffectRows& rows) {
        return number - rows.first_parameter < NUM_EFFECT_PARAMETERS;
    };
    return meaning.label[0] == '\0' &&
           (is_of(mono_effect_rows(0)) || is_of(mono_effect_rows(1)) || is_of(STEREO_EFFECT_ROWS));
}

// The label that a byte picks; null for a byte beyond the list.
const char* choice_label(unsigned number, int byte, const ControlMeaning& meaning) {
    if (meaning.choices.empty())
        return nullptr; // its quantity may be infinite
    const int choice = int(quantity_of(number, byte, meaning));
    return choice >= 0 && size_t(choice) < meaning.choices.size() ? meaning.choices[size_t(choice)]
                                                                  : nullptr;
}

std::optional<int> parse_choice(const std::string& text, unsigned number,
                                const ControlMeaning& meaning) {
    std::optional<int> starts;
    for (int byte = 0; byte < 128; byte++) {
        const char* shown = choice_label(number, byte, meaning);
        if (shown == nullptr)
            continue;
        const std::string label = trimmed_lower(shown);
        if (label == text)
            return byte;
        if (!starts && label.starts_with(text))
            starts = byte;
    }
    return starts;
}

// The byte of this length, in the middle of its like; nothing when none has it.
std::optional<int> parse_length(const NoteLength& wanted, unsigned number,
                                const ControllerBytes& bytes) {
    int sum = 0;
    int count = 0;
    for (int byte = 0; byte < 128; byte++) {
        if (followed_length(number, byte, bytes) == &wanted) {
            sum += byte;
            count++;
        }
    }
    return count > 0 ? std::optional(sum / count) : std::nullopt;
}

} // namespace

std::string control_label(unsigned number, const ControllerBytes& bytes, const char* label) {
    const ControlMeaning meaning = meaning_of(number, bytes);
    return meaning.label[0] != '\0' ? meaning.label : label;
}

std::string control_text(unsigned number, int byte, const ControllerBytes& bytes,
                         bool follows_tempo) {
    if (follows_tempo) {
        if (const NoteLength* const length = followed_length(number, byte, bytes))
            return length->name;
    }
    const ControlMeaning meaning = meaning_of(number, bytes);
    if (meaning.choices.empty() && !is_multiplying(number, byte) && !is_bare(number, meaning)) {
        if (const auto text =
                musical_text(number, quantity_of(number, byte, meaning), meaning.unit))
            return *text;
    }
    if (meaning.quantity == nullptr)
        return with_short_unit(controller_display(number, byte));
    const char* label = choice_label(number, byte, meaning);
    if (!meaning.choices.empty())
        return label != nullptr ? label : std::to_string(byte);
    return quantity_text(meaning.quantity(byte), meaning.unit);
}

std::optional<int> parse_control(unsigned number, std::string_view typed,
                                 const ControllerBytes& bytes, bool follows_tempo) {
    const NoteLength* const length = follows_tempo ? find_note_length(typed) : nullptr;
    if (length != nullptr && followed_length(number, bytes[number], bytes) != nullptr)
        return parse_length(*length, number, bytes);
    const ControlMeaning meaning = meaning_of(number, bytes);
    const std::string text = trimmed_lower(typed);
    if (text.empty())
        return std::nullopt;
    if (!meaning.choices.empty())
        return parse_choice(text, number, meaning);
    const ControllerChoices& range = find_controller(number)->choices;
    const bool can_multiply = is_multiplying(number, range.last);
    if (can_multiply && std::string_view(MULTIPLIES_TEXT).starts_with(text))
        return range.last;
    std::optional<double> wanted;
    if (!is_bare(number, meaning))
        wanted = parse_musical(number, text, meaning.unit);
    if (!wanted)
        wanted = parse_quantity(text, meaning.unit, control_text(number, bytes[number], bytes));
    if (!wanted)
        return std::nullopt;
    const int last = can_multiply ? range.last - 1 : range.last;
    // Below everything but silence, or above everything.
    if (std::isinf(*wanted))
        return *wanted < 0.0 ? int(range.first) : last;
    if (meaning.unit == Unit::LEVEL && *wanted == 0.0)
        return range.first;
    return nearest_byte(range.first, last, [&](int byte) {
        return quantity_distance(quantity_of(number, byte, meaning), *wanted, meaning.unit);
    });
}

} // namespace tarquil
