// Quantities as people read and type them.

#include "softsynth/parameters/quantity_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "common/characters.h"
#include "common/number_text.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr double SAMPLES_PER_SECOND = double(SAMPLE_RATE);

// Plain quantities are rounded so that neighbouring bytes of every controller differ.
constexpr int PLAIN_DECIMALS = 4;

// Three digits, or more in front of the point.
std::string three_digits(double value) {
    if (std::abs(value) >= 99.95)
        return fixed_number(value, 0);
    return fixed_number(value, std::abs(value) >= 9.995 ? 1 : 2);
}

double decibels(double gain) {
    return 20.0 * std::log10(gain);
}

std::string level_text(double gain) {
    return gain > 0.0 ? fixed_number(decibels(gain), 1) + " dB" : "-inf dB";
}

std::string time_text(double seconds) {
    return seconds < 0.9995 ? three_digits(seconds * 1000.0) + " ms" : three_digits(seconds) + " s";
}

std::string frequency_text(double hertz) {
    return hertz < 999.5 ? three_digits(hertz) + " Hz" : three_digits(hertz / 1000.0) + " kHz";
}

// "1 copy", "1 semitone".
std::string counted(const std::string& number, std::string_view unit) {
    if (number == "1" && unit == "copies")
        unit = "copy";
    else if (number == "1" && unit.ends_with('s'))
        unit.remove_suffix(1);
    return number + " " + std::string(unit);
}

// Long units do not fit below a knob.
constexpr std::pair<std::string_view, std::string_view> SHORT_UNITS[] = {
    {" semitones", " st"}, {" semitone", " st"}, {" octaves", " oct"}, {" octave", " oct"}};

// How many of `own` one of the unit named `name` is; nothing for one that does not fit.
std::optional<double> unit_factor(const std::string& name, Unit own) {
    const auto is_one_of = [&name](std::initializer_list<std::string_view> names) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    const double second = own == Unit::SAMPLES ? SAMPLES_PER_SECOND : 1.0;
    std::optional<double> factor;
    switch (own) {
    case Unit::HERTZ:
        if (is_one_of({"k", "khz"}))
            factor = 1000.0;
        else if (is_one_of({"", "hz"}))
            factor = 1.0;
        break;
    case Unit::SECONDS:
    case Unit::SAMPLES:
        if (name == "ms")
            factor = second / 1000.0;
        else if (name == "s")
            factor = second;
        break;
    default:
        // "semitone" for "semitones", "oct" for "octaves"
        if (name.empty() || (own == Unit::SEMITONES && name == "st") ||
            (own != Unit::NONE && trimmed_lower(unit_name(own)).starts_with(name.substr(0, 3))))
            factor = 1.0;
    }
    return factor;
}

} // namespace

const char* unit_name(Unit unit) {
    switch (unit) {
    case Unit::NONE:
        break;
    case Unit::LEVEL:
        return "dB";
    case Unit::SECONDS:
    case Unit::SAMPLES:
        return "s";
    case Unit::HERTZ:
        return "Hz";
    case Unit::Q:
        return "Q";
    case Unit::RATIO:
        return ":1";
    case Unit::SEMITONES:
        return "semitones";
    case Unit::OCTAVES:
        return "octaves";
    case Unit::CYCLES:
        return "cycles";
    case Unit::COPIES:
        return "copies";
    case Unit::VOICES:
        return "voices";
    case Unit::BPM:
        return "bpm";
    case Unit::BITS:
        return "bits";
    case Unit::HELD_SAMPLES:
        return "samples";
    }
    return "";
}

std::string quantity_text(double quantity, Unit unit) {
    switch (unit) {
    case Unit::LEVEL:
        return level_text(quantity);
    case Unit::SAMPLES:
        return time_text(quantity / SAMPLES_PER_SECOND);
    case Unit::SECONDS:
        return time_text(quantity);
    case Unit::HERTZ:
        return frequency_text(quantity);
    case Unit::Q:
        return "Q " + fixed_number(quantity, 2);
    case Unit::RATIO:
        return fixed_number(quantity, 2) + ":1";
    case Unit::NONE:
        return trimmed_number(quantity, PLAIN_DECIMALS);
    default:
        return counted(trimmed_number(quantity, PLAIN_DECIMALS), unit_name(unit));
    }
}

std::string with_short_unit(std::string text) {
    for (const auto& [long_unit, short_unit] : SHORT_UNITS) {
        if (text.ends_with(long_unit))
            return text.replace(text.size() - long_unit.size(), std::string::npos, short_unit);
    }
    return text;
}

std::optional<double> parse_quantity(std::string_view typed, Unit unit, std::string_view shown) {
    const std::optional<TypedNumber> number = parse_typed_number(typed);
    if (!number)
        return std::nullopt;
    if (unit == Unit::LEVEL) {
        if (!number->unit.empty() && number->unit != "db")
            return std::nullopt;
        return std::pow(10.0, number->value / 20.0);
    }
    std::string name = number->unit;
    if (name.empty()) {
        const std::optional<TypedNumber> shown_number = parse_typed_number(shown);
        name = shown_number ? shown_number->unit : "";
    }
    const std::optional<double> factor = unit_factor(name, unit);
    if (!factor)
        return std::nullopt;
    return number->value * *factor;
}

std::optional<TypedNumber> parse_typed_number(std::string_view typed) {
    std::string text = trimmed_lower(typed);
    std::replace(text.begin(), text.end(), ',', '.');
    if (text.starts_with("q ")) // "Q 1.5"
        text.erase(0, 2);
    if (text.starts_with('+'))
        text.erase(0, 1);
    TypedNumber number;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number.value);
    if (error != std::errc() || std::isnan(number.value))
        return std::nullopt;
    number.unit = trimmed_lower({rest, size_t(end - rest)});
    return number;
}

double quantity_distance(double a, double b, Unit unit) {
    if (unit == Unit::LEVEL) {
        a = decibels(a);
        b = decibels(b);
    }
    return a == b ? 0.0 : std::abs(a - b);
}

std::string trimmed_lower(std::string_view text) {
    return lower_case(std::string(trimmed(text)));
}

} // namespace tarquil
