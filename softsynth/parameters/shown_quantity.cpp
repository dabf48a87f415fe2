// Quantities in the units that musicians count in.

#include "softsynth/parameters/shown_quantity.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "common/characters.h"
#include "common/number_text.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/quantity_text.h"

namespace tarquil {

namespace {

enum class Kind { NONE, PERCENT, PLACE, CENTS, DEGREES };

constexpr double PERCENT = 100.0;
constexpr double CENTS = 100.0; // a semitone
constexpr double DEGREES = 360.0;

// No part of a whole, though without a unit.  Resonance is moved by its own Q.
bool is_plain(unsigned number) {
    constexpr ModulationRows RESONANCE = modulation_rows(RESONANCE_SLOT);
    return number == CTRL_RETRIGGER_SPEEDUP || number == CTRL_LPC_SELECT ||
           number == CTRL_LPC_SPEED || number == CTRL_PITCH_BEND_MSB ||
           number == CTRL_PITCH_BEND_LSB || number == RESONANCE.amount ||
           number == RESONANCE.fine_amount;
}

Kind kind_of(unsigned number, Unit unit) {
    if (number == CTRL_PANNING)
        return Kind::PLACE;
    if (unit == Unit::CYCLES)
        return Kind::DEGREES;
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        const OscillatorRows rows = oscillator_rows(i);
        if (number == rows.fine_tune || number == rows.spread)
            return Kind::CENTS;
        if (number == rows.random_phase)
            return Kind::NONE;
    }
    return unit == Unit::NONE && !is_plain(number) ? Kind::PERCENT : Kind::NONE;
}

// The default stands in the middle.
double middle() {
    return double(map_char_to_float(CTRL_PANNING, default_byte(*find_controller(CTRL_PANNING))));
}

// -100 left to 100 right.
double place_of(double quantity) {
    const double way = quantity - middle();
    return PERCENT * way / (way < 0.0 ? middle() : 1.0 - middle());
}
double quantity_at(double place) {
    return middle() + place / PERCENT * (place < 0.0 ? middle() : 1.0 - middle());
}

std::string place_text(double quantity) {
    const double place = std::round(place_of(quantity));
    if (place == 0.0)
        return "C";
    return (place < 0.0 ? "L " : "R ") + fixed_number(std::abs(place), 0);
}

// "30 l", "l 30", "c", "-30".
std::optional<double> parse_place(std::string text) {
    if (text == "c" || text == "centre" || text == "center" || text == "middle")
        return middle();
    double side = 0.0;
    if (text.starts_with('l') || text.starts_with('r')) {
        side = text.front() == 'l' ? -1.0 : 1.0;
        text = trimmed_lower(text.substr(1));
    }
    const std::optional<TypedNumber> typed = parse_typed_number(text);
    if (!typed || !std::isfinite(typed->value))
        return std::nullopt;
    const std::string& unit = typed->unit;
    if (side == 0.0 && (unit == "l" || unit == "left" || unit == "r" || unit == "right"))
        side = unit.front() == 'l' ? -1.0 : 1.0;
    else if (!unit.empty() && unit != "%")
        return std::nullopt;
    return quantity_at(std::clamp(typed->value * (side == 0.0 ? 1.0 : side), -PERCENT, PERCENT));
}

struct UnitName {
    Kind kind;
    std::string_view name;
    double factor; // from the quantity
};

// Without a name a number counts in the first of its kind.
constexpr UnitName UNIT_NAMES[] = {
    {Kind::PERCENT, "%", PERCENT},       {Kind::PERCENT, "percent", PERCENT},
    {Kind::CENTS, "ct", CENTS},          {Kind::CENTS, "cent", CENTS},
    {Kind::CENTS, "cents", CENTS},       {Kind::CENTS, "st", 1.0},
    {Kind::CENTS, "semitone", 1.0},      {Kind::CENTS, "semitones", 1.0},
    {Kind::DEGREES, "\u00b0", DEGREES},  {Kind::DEGREES, "deg", DEGREES},
    {Kind::DEGREES, "degrees", DEGREES},
};

} // namespace

std::optional<std::string> musical_text(unsigned number, double quantity, Unit unit) {
    switch (kind_of(number, unit)) {
    case Kind::PERCENT:
        // Fine amounts are steps of a fortieth of a percent.
        return trimmed_number(PERCENT * quantity, std::abs(quantity) < 0.02 ? 2 : 1) + " %";
    case Kind::PLACE:
        return place_text(quantity);
    case Kind::CENTS:
        return trimmed_number(CENTS * quantity, 1) + " ct";
    case Kind::DEGREES:
        return trimmed_number(DEGREES * quantity, 1) + "\u00b0";
    case Kind::NONE:
        break;
    }
    return std::nullopt;
}

std::optional<double> parse_musical(unsigned number, std::string_view text, Unit unit) {
    const Kind kind = kind_of(number, unit);
    const std::string lower = trimmed_lower(text);
    if (kind == Kind::PLACE)
        return parse_place(lower);
    const std::optional<TypedNumber> typed = parse_typed_number(lower);
    if (!typed || !std::isfinite(typed->value))
        return std::nullopt;
    const auto* const found =
        std::find_if(std::begin(UNIT_NAMES), std::end(UNIT_NAMES), [&](const UnitName& one) {
            return one.kind == kind && (typed->unit.empty() || one.name == typed->unit);
        });
    if (found == std::end(UNIT_NAMES))
        return std::nullopt;
    return typed->value / found->factor;
}

} // namespace tarquil
