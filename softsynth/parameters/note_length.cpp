// Note lengths, and which controllers are read as such when they follow a tempo.

#include "softsynth/parameters/note_length.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_parameter.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/nearest_byte.h"
#include "softsynth/parameters/quantity_text.h"
#include "softsynth/parameters/stereo_effect_quantities.h"

namespace tarquil {

namespace {

constexpr NoteLength LENGTHS[] = {
    {"4/1 D", 24.0},    {"4/1", 16.0},       {"2/1 D", 12.0},     {"4/1 T", 32.0 / 3},
    {"2/1", 8.0},       {"1/1 D", 6.0},      {"2/1 T", 16.0 / 3}, {"1/1", 4.0},
    {"1/2 D", 3.0},     {"1/1 T", 8.0 / 3},  {"1/2", 2.0},        {"1/4 D", 1.5},
    {"1/2 T", 4.0 / 3}, {"1/4", 1.0},        {"1/8 D", 0.75},     {"1/4 T", 2.0 / 3},
    {"1/8", 0.5},       {"1/16 D", 0.375},   {"1/8 T", 1.0 / 3},  {"1/16", 0.25},
    {"1/32 D", 0.1875}, {"1/16 T", 1.0 / 6}, {"1/32", 0.125},     {"1/32 T", 1.0 / 12}};

// At which bytes are read.
constexpr double SECONDS_PER_QUARTER = 0.5;

// As ratios, which need no logarithm.
const NoteLength* nearest_length(double seconds) {
    const double quarters = seconds / SECONDS_PER_QUARTER;
    return &LENGTHS[nearest_byte(0, int(std::size(LENGTHS)) - 1, [quarters](int index) {
        const double length = LENGTHS[index].quarters;
        return std::max(length / quarters, quarters / length);
    })];
}

const NoteLength* nearest_period(double hertz) {
    return hertz > 0.0 ? nearest_length(1.0 / hertz) : nullptr;
}

const NoteLength* followed_stereo_length(unsigned index, int byte, unsigned type) {
    if (type == STEREO_EFFECT_DELAY && index < 2)
        return nearest_length(double(stereo_delay_seconds(byte)));
    if ((type == STEREO_EFFECT_CHORUS || type == STEREO_EFFECT_FLANGER) && index == 1)
        return nearest_period(double(stereo_lfo_hz(byte)));
    return nullptr;
}

// "1/8 D", "1/8d" and "1/8." are the same.
std::string plain_name(std::string_view name) {
    std::string text = trimmed_lower(name);
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    if (text.ends_with('.'))
        text.back() = 'd';
    return text;
}

} // namespace

std::span<const NoteLength> note_lengths() {
    return LENGTHS;
}

const NoteLength* find_note_length(std::string_view text) {
    const std::string wanted = plain_name(text);
    const auto* const found =
        std::find_if(std::begin(LENGTHS), std::end(LENGTHS),
                     [&](const NoteLength& length) { return plain_name(length.name) == wanted; });
    return found == std::end(LENGTHS) ? nullptr : found;
}

const NoteLength* followed_length(unsigned number, int byte, const ControllerBytes& bytes) {
    switch (number) {
    case CTRL_DELAY_LEFT_TIME:
    case CTRL_DELAY_RIGHT_TIME:
        return nearest_length(double(stereo_delay_seconds(byte)));
    case CTRL_LFO1_SPEED:
    case CTRL_LFO2_SPEED:
        return nearest_period(double(cubed(map_char_to_float(number, byte))));
    case CTRL_RETRIGGER_BPM:
        return nearest_length(60.0 / double(map_char_to_float(number, byte)));
    default:
        break;
    }
    const EffectRows& rows = STEREO_EFFECT_ROWS;
    return number - rows.first_parameter < NUM_EFFECT_PARAMETERS
               ? followed_stereo_length(number - rows.first_parameter, byte, bytes[rows.type])
               : nullptr;
}

} // namespace tarquil
