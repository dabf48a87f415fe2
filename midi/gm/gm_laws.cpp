// How quantities of General MIDI become controller bytes of the engine.

#include "midi/gm/gm_laws.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

constexpr double TOP = 127.0;
constexpr double HALF_PI = std::numbers::pi / 2;

// Keeps what is a whole number or a half, but for rounding errors, on its side.
constexpr double ROUNDING_SLACK = 1e-6;

// What a sound that names no send of its own sends at DEFAULT_REVERB: -18 dB.
constexpr uint8_t USUAL_REVERB_BYTE = 64;

constexpr double CHORUS_SHARE = 0.5;

uint8_t nearest_byte(double value) {
    return uint8_t(std::lround(std::clamp(value, 0.0, TOP)));
}

double cubed(double x) {
    return x * x * x;
}

} // namespace

double level_gain(double value_of_127) {
    const double part = value_of_127 / TOP;
    return part * part;
}

double exact_volume(unsigned own, unsigned volume, unsigned expression, unsigned master) {
    const double levels = level_gain(volume) * level_gain(expression) *
                          level_gain(TOP * double(master) / double(MAX_MASTER_VOLUME));
    return double(own) * std::cbrt(levels);
}

uint8_t volume_byte(double exact) {
    return uint8_t(std::clamp(std::ceil(exact - ROUNDING_SLACK), 0.0, TOP));
}

double volume_correction(double exact) {
    const double byte = volume_byte(exact);
    return byte > 0.0 ? std::min(1.0, cubed(exact / byte)) : 1.0;
}

uint8_t pan_byte(int value) {
    const double angle = HALF_PI * std::max(0, std::clamp(value, 0, 127) - 1) / 126.0;
    const double right = std::sin(angle);
    return nearest_byte(TOP * right * right + ROUNDING_SLACK);
}

int pan_value(uint8_t byte) {
    const double angle = std::asin(std::sqrt(std::min(1.0, byte / TOP)));
    return int(std::lround(1.0 + 126.0 * angle / HALF_PI));
}

uint8_t engine_velocity(double velocity, VelocityLaw law, double factor) {
    const double part = std::clamp(velocity / TOP, 0.0, 1.0);
    const double value =
        law == VelocityLaw::LINEAR ? part * std::sqrt(factor) : part * part * factor;
    return std::max<uint8_t>(1, nearest_byte(TOP * value));
}

uint8_t reverb_byte(uint8_t own, unsigned reverb) {
    const double usual = own != 0 ? own : USUAL_REVERB_BYTE;
    return nearest_byte(usual * std::cbrt(double(reverb) / DEFAULT_REVERB));
}

uint8_t chorus_byte(unsigned chorus) {
    return nearest_byte(TOP * std::cbrt(CHORUS_SHARE * chorus / TOP));
}

uint8_t scaled_time_byte(unsigned controller, uint8_t own, unsigned value) {
    // The engine's time is the cube of offset + scale * byte, and the cube root of 8 is 2.
    const ControllerInfo* info = find_controller(controller);
    const double root = info->mapping.offset + double(info->mapping.scale) * own;
    const double scaled = root * std::exp2((double(value) - 64.0) / 64.0);
    return nearest_byte((scaled - info->mapping.offset) / info->mapping.scale);
}

unsigned bend_value(double semitones) {
    constexpr double CENTRE = 8192.0;
    return unsigned(std::lround(std::clamp(CENTRE + CENTRE * semitones / 12.0, 0.0, 16383.0)));
}

} // namespace tarquil
