// Two controllers, a coarse one and a fine one, that are one value to people: the amount of a slot
// of modulation, and the pitch bend.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "softsynth/parameters/controller_number.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

struct CoarseAndFine {
    unsigned coarse; // their numbers
    unsigned fine;
};

constexpr CoarseAndFine amount_pair(unsigned slot) {
    return {modulation_rows(slot).amount, modulation_rows(slot).fine_amount};
}
inline constexpr CoarseAndFine BEND_PAIR = {CTRL_PITCH_BEND_MSB, CTRL_PITCH_BEND_LSB};

struct PairBytes {
    int coarse = 0;
    int fine = 0;

    bool operator==(const PairBytes&) const = default;
};

// What both mean together.  Of a slot: what the source at 1 adds to its target, which for pitches
// is a factor of 1, for the cutoff octaves, for the resonance Q and for the amplitude the level.
// Of the bend: octaves.  Not of a slot that multiplies.
double pair_quantity(const CoarseAndFine& pair, const PairBytes& bytes);

// The most that both together can be, the same up and down.
double largest_pair_quantity(const CoarseAndFine& pair);

// The bytes that come nearest, with the fine one near its middle; a slot's never multiply.
PairBytes nearest_pair(const CoarseAndFine& pair, double quantity);

// "+5.3 ct", "-7.02 st" or "+1.5 oct", whatever reads best, "+0.39 %", "+0.5 Q".
std::string pair_text(const CoarseAndFine& pair, double quantity);

// The quantity of a text in one of these units, whatever its size; without one it is that of
// `shown`.  Nothing when it means none.
std::optional<double> parse_pair(const CoarseAndFine& pair, std::string_view text,
                                 std::string_view shown);

} // namespace tarquil
