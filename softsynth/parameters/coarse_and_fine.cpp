// Two controllers, a coarse one and a fine one, that are one value to people.

#include "softsynth/parameters/coarse_and_fine.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/nearest_byte.h"
#include "softsynth/parameters/quantity_text.h"

namespace tarquil {

namespace {

constexpr double SEMITONES_AN_OCTAVE = 12.0; // an octave
constexpr double CENTS_AN_OCTAVE = 1200.0;
constexpr double PERCENT_OF_ONE = 100.0;

// The bend's 14 bits are an octave either way.
constexpr int BEND_CENTRE = 8192;
constexpr int LAST_BEND = 16383;
constexpr int FINE_VALUES = 128;

// A factor of less than this, four octaves down, is said in percent of the frequency.
constexpr double LOWEST_RATIO = 1.0 / 16;

enum class PairKind { BEND, PITCH, RESONANCE, CUTOFF, AMPLITUDE };

PairKind pair_kind_of(const CoarseAndFine& pair) {
    if (pair.coarse == BEND_PAIR.coarse)
        return PairKind::BEND;
    const unsigned slot = pair.coarse - amount_pair(0).coarse;
    if (slot == AMPLITUDE_SLOT)
        return PairKind::AMPLITUDE;
    if (slot == RESONANCE_SLOT)
        return PairKind::RESONANCE;
    return slot >= FIRST_CUTOFF_SLOT ? PairKind::CUTOFF : PairKind::PITCH;
}

std::string signed_text(double value, int decimals, const char* unit) {
    const std::string number = trimmed_number(value, decimals);
    const bool is_positive = number != "0" && number[0] != '-';
    return (is_positive ? "+" : "") + number + unit;
}

std::string signed_percent(double part) {
    return signed_text(PERCENT_OF_ONE * part, std::abs(part) < 0.1 ? 2 : 1, " %");
}

// Cents below a semitone; octaves from one on where that is what is counted in.
std::string interval_text(double octaves, bool in_octaves) {
    if (std::abs(octaves) * SEMITONES_AN_OCTAVE < 0.9995)
        return signed_text(CENTS_AN_OCTAVE * octaves, 1, " ct");
    if (in_octaves && std::abs(octaves) > 0.9995)
        return signed_text(octaves, 2, " oct");
    return signed_text(SEMITONES_AN_OCTAVE * octaves, 2, " st");
}

// How many octaves one of the unit is; nothing for another.
std::optional<double> octaves_of(std::string_view unit) {
    if (unit == "ct" || unit == "cent" || unit == "cents")
        return 1.0 / CENTS_AN_OCTAVE;
    if (unit == "st" || unit == "semitone" || unit == "semitones")
        return 1.0 / SEMITONES_AN_OCTAVE;
    if (unit == "oct" || unit == "octave" || unit == "octaves")
        return 1.0;
    return std::nullopt;
}

bool is_percent(std::string_view unit) {
    return unit == "%" || unit == "percent";
}

} // namespace

double pair_quantity(const CoarseAndFine& pair, const PairBytes& bytes) {
    if (pair_kind_of(pair) == PairKind::BEND)
        return double(FINE_VALUES * bytes.coarse + bytes.fine - BEND_CENTRE) / BEND_CENTRE;
    return controller_quantity(pair.coarse, bytes.coarse) +
           controller_quantity(pair.fine, bytes.fine);
}

double largest_pair_quantity(const CoarseAndFine& pair) {
    // Of the coarse amount: its bytes reach as far down as their offset.
    return pair_kind_of(pair) == PairKind::BEND
               ? 1.0
               : std::abs(double(find_controller(pair.coarse)->mapping.offset));
}

PairBytes nearest_pair(const CoarseAndFine& pair, double quantity) {
    const double largest = 2.0 * largest_pair_quantity(pair);
    quantity = std::clamp(quantity, -largest, largest);
    if (pair_kind_of(pair) == PairKind::BEND) {
        const int bend =
            std::clamp(int(std::lround(quantity * BEND_CENTRE)) + BEND_CENTRE, 0, LAST_BEND);
        return {bend / FINE_VALUES, bend % FINE_VALUES};
    }
    const int coarse = nearest_byte(0, MULTIPLYING_AMOUNT - 1, [&](int byte) {
        return std::abs(controller_quantity(pair.coarse, byte) - quantity);
    });
    const double rest = quantity - controller_quantity(pair.coarse, coarse);
    const int fine = nearest_byte(0, FINE_VALUES - 1, [&](int byte) {
        return std::abs(controller_quantity(pair.fine, byte) - rest);
    });
    return {coarse, fine};
}

std::string pair_text(const CoarseAndFine& pair, double quantity) {
    switch (pair_kind_of(pair)) {
    case PairKind::BEND:
        return interval_text(quantity, false);
    case PairKind::PITCH:
        return 1.0 + quantity < LOWEST_RATIO ? signed_percent(quantity)
                                             : interval_text(std::log2(1.0 + quantity), false);
    case PairKind::RESONANCE:
        return signed_text(quantity, 3, " Q");
    case PairKind::CUTOFF:
        return interval_text(quantity, true);
    case PairKind::AMPLITUDE:
        break;
    }
    return signed_percent(quantity);
}

std::optional<double> parse_pair(const CoarseAndFine& pair, std::string_view text,
                                 std::string_view shown) {
    const std::optional<TypedNumber> typed = parse_typed_number(text);
    if (!typed || !std::isfinite(typed->value))
        return std::nullopt;
    std::string unit = typed->unit;
    if (unit.empty()) {
        const std::optional<TypedNumber> now = parse_typed_number(shown);
        unit = now ? now->unit : "";
    }
    const PairKind kind = pair_kind_of(pair);
    if (kind == PairKind::RESONANCE)
        return unit == "q" ? std::optional(typed->value) : std::nullopt;
    if (is_percent(unit))
        return kind == PairKind::AMPLITUDE || kind == PairKind::PITCH
                   ? std::optional(typed->value / PERCENT_OF_ONE)
                   : std::nullopt;
    const std::optional<double> octaves = octaves_of(unit);
    if (!octaves || kind == PairKind::AMPLITUDE)
        return std::nullopt;
    const double interval = typed->value * *octaves;
    return kind == PairKind::PITCH ? std::exp2(interval) - 1.0 : interval;
}

} // namespace tarquil
