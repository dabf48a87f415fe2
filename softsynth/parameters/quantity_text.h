// Quantities as people read and type them: "-6.0 dB", "1.25 kHz", "0.5 st".

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "softsynth/parameters/unit.h"

namespace tarquil {

// Levels in dB ("-inf dB" for silence), times in ms or s, frequencies in Hz or kHz.
std::string quantity_text(double quantity, Unit unit);

// The text with the short form of its unit: "0.5 st" for "0.5 semitones".
std::string with_short_unit(std::string text);

// The quantity that `typed` means: in the unit that it names ("1.2 k", "80 ms", "-inf"), else in
// that of the text `shown`; nothing when it means none.
std::optional<double> parse_quantity(std::string_view typed, Unit unit, std::string_view shown);

// How far apart two quantities look: levels count in dB.
double quantity_distance(double a, double b, Unit unit);

// A number as people type it, "1,5 kHz", with what stands behind it in lower case; it may be
// infinite.  Nothing for what is no number.
struct TypedNumber {
    double value = 0.0;
    std::string unit{};
};
std::optional<TypedNumber> parse_typed_number(std::string_view text);

// In lower case and without the blanks around it.
std::string trimmed_lower(std::string_view text);

} // namespace tarquil
