// The ports: fixed ones, then a control input for each parameter, in real units.

#include "formats/lv2/port_table.h"

#include <algorithm>
#include <cmath>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

// What stands for silence.
constexpr double SILENCE_DB = -160;
// What stands for a ratio of infinity to 1.
constexpr double INFINITE_RATIO = 1000;

bool is_effect_parameter(unsigned number) {
    const unsigned firsts[] = {mono_effect_rows(0).first_parameter,
                               mono_effect_rows(1).first_parameter,
                               STEREO_EFFECT_ROWS.first_parameter};
    return std::ranges::any_of(
        firsts, [&](unsigned first) { return number - first < NUM_EFFECT_PARAMETERS; });
}

double port_value(unsigned number, int byte, Unit unit) {
    const double quantity = controller_quantity(number, byte);
    switch (unit) {
    case Unit::LEVEL:
        return quantity > 0 ? std::max(20 * std::log10(quantity), SILENCE_DB) : SILENCE_DB;
    case Unit::SAMPLES:
        return quantity / SAMPLE_RATE;
    case Unit::RATIO:
        return std::min(quantity, INFINITE_RATIO);
    default:
        return quantity;
    }
}

} // namespace

Lv2Control::Lv2Control(const HostControl& shown)
    : control(&shown), controller(find_controller(shown.number)) {
    const ControllerInfo& row = *controller;
    const bool is_byte = shown.is_list || is_effect_parameter(row.number);
    integer = is_byte || row.unit == Unit::COPIES || row.unit == Unit::VOICES;
    quantity_unit = is_byte ? Unit::NONE : row.unit;
    for (int byte = 0; byte < 128; byte++)
        values[size_t(byte)] =
            is_byte ? float(byte) : float(port_value(row.number, byte, row.unit));
}

int Lv2Control::byte(float wanted) const {
    if (std::isnan(wanted))
        return -1;
    wanted = std::clamp(wanted, lowest(), highest());
    const auto start = values.begin() + control->first;
    const auto last = values.begin() + control->last + 1;
    const auto nearest = std::min_element(start, last, [&](float a, float b) {
        return std::fabs(a - wanted) < std::fabs(b - wanted);
    });
    return int(nearest - values.begin());
}

float Lv2Control::lowest() const {
    return *std::min_element(values.begin() + control->first, values.begin() + control->last + 1);
}

float Lv2Control::highest() const {
    return *std::max_element(values.begin() + control->first, values.begin() + control->last + 1);
}

bool Lv2Control::is_logarithmic() const {
    return quantity_unit == Unit::HERTZ && lowest() > 0;
}

const char* Lv2Control::unit() const {
    switch (quantity_unit) {
    case Unit::LEVEL:
        return "units:db";
    case Unit::SECONDS:
    case Unit::SAMPLES:
        return "units:s";
    case Unit::HERTZ:
        return "units:hz";
    case Unit::SEMITONES:
        return "units:semitone12TET";
    case Unit::OCTAVES:
        return "units:oct";
    case Unit::BPM:
        return "units:bpm";
    default:
        return nullptr;
    }
}

const std::vector<Lv2Control>& lv2_controls() {
    static const std::vector<Lv2Control> controls = [] {
        std::vector<Lv2Control> all;
        for (const HostControl& control : host_controls()) {
            if (control.kind == HostControl::Kind::CONTROLLER)
                all.emplace_back(control);
        }
        return all;
    }();
    return controls;
}

uint32_t lv2_port_of(unsigned number) {
    const std::vector<Lv2Control>& controls = lv2_controls();
    for (uint32_t i = 0; i < controls.size(); i++) {
        if (controls[i].number() == number)
            return NUM_FIXED_LV2_PORTS + i;
    }
    return 0;
}

} // namespace tarquil
