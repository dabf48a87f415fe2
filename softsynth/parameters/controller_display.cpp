// What a controller's byte stands for, as people read it.

#include "softsynth/parameters/controller_display.h"

#include <cmath>

#include "common/number_text.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

constexpr double LOWEST_OCTAVE_HZ = 20.0;
constexpr double SAMPLES_PER_SECOND = double(SAMPLE_RATE);

// Plain quantities are rounded so that neighbouring bytes of every controller differ.
constexpr int PLAIN_DECIMALS = 4;

// Three digits, or more in front of the point.
std::string three_digits(double value) {
    if (std::abs(value) >= 99.95)
        return fixed_number(value, 0);
    return fixed_number(value, std::abs(value) >= 9.995 ? 1 : 2);
}

std::string decibels(double gain) {
    return gain > 0.0 ? fixed_number(20.0 * std::log10(gain), 1) + " dB" : "-inf dB";
}

std::string seconds(double value) {
    return value < 0.9995 ? three_digits(value * 1000.0) + " ms" : three_digits(value) + " s";
}

std::string hertz(double value) {
    return value < 999.5 ? three_digits(value) + " Hz" : three_digits(value / 1000.0) + " kHz";
}

// "1 copy", "1 semitone".
std::string counted(const std::string& number, std::string_view unit) {
    if (number == "1" && unit == "copies")
        unit = "copy";
    else if (number == "1" && unit.ends_with('s'))
        unit.remove_suffix(1);
    return number + " " + std::string(unit);
}

} // namespace

double controller_quantity(unsigned number, int byte) {
    const auto value = double(map_char_to_float(number, byte));
    const ControllerInfo* info = find_controller(number);
    if (info == nullptr)
        return value;
    switch (info->curve) {
    case ControllerCurve::CUBED:
        return value * value * value;
    case ControllerCurve::OCTAVES:
        return LOWEST_OCTAVE_HZ * std::exp2(value);
    case ControllerCurve::SQUARED_POWER_OF_TEN:
        return std::pow(10.0, 2.0 * value);
    case ControllerCurve::LINEAR_CURVE:
        break;
    }
    return value;
}

std::string quantity_display(double quantity, std::string_view unit) {
    if (unit == "level")
        return decibels(quantity);
    if (unit == "samples")
        return seconds(quantity / SAMPLES_PER_SECOND);
    if (unit == "s")
        return seconds(quantity);
    if (unit == "Hz")
        return hertz(quantity);
    if (unit == "Q")
        return "Q " + fixed_number(quantity, 2);
    if (unit == ":1")
        return fixed_number(quantity, 2) + ":1";
    const std::string number = trimmed_number(quantity, PLAIN_DECIMALS);
    return unit.empty() ? number : counted(number, unit);
}

std::string controller_display(unsigned number, int byte) {
    const ControllerInfo* info = find_controller(number);
    if (info == nullptr)
        return std::to_string(byte);
    const int choice = byte - info->choices.first;
    if (!info->choices.labels.empty()) {
        return choice >= 0 && size_t(choice) < info->choices.labels.size()
                   ? info->choices.labels[size_t(choice)]
                   : std::to_string(byte);
    }
    return quantity_display(controller_quantity(number, byte), info->unit);
}

} // namespace tarquil
