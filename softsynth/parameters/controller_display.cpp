// What a controller's byte stands for.

#include "softsynth/parameters/controller_display.h"

#include <cmath>

#include "common/characters.h"
#include "common/number_text.h"
#include "softsynth/parameters/compressor_quantities.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_quantities.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/master_quantities.h"
#include "softsynth/parameters/nearest_byte.h"
#include "softsynth/parameters/quantity_text.h"
#include "softsynth/parameters/stereo_effect_quantities.h"
#include "softsynth/parameters/voice_quantities.h"

namespace tarquil {

double controller_quantity(unsigned number, int byte) {
    const float value = map_char_to_float(number, byte);
    const ControllerInfo* info = find_controller(number);
    if (info == nullptr)
        return double(value);
    switch (info->curve) {
    case ControllerCurve::LINEAR_CURVE:
        break;
    case ControllerCurve::CUBED:
        return double(cubed(value));
    case ControllerCurve::OCTAVES:
        return cutoff_hertz(value);
    case ControllerCurve::SQUARED_POWER_OF_TEN:
        return filter_gain(value);
    case ControllerCurve::ENVELOPE_TIME:
        return envelope_samples(value);
    case ControllerCurve::PORTAMENTO_TIME:
        return portamento_samples(value);
    case ControllerCurve::SEND:
        return double(send_level(value));
    case ControllerCurve::PRE_GAIN:
        return double(master_pre_gain(value));
    case ControllerCurve::CUBED_RATIO:
        return compressor_ratio(cubed(value));
    case ControllerCurve::DELAY_TIME:
        return double(stereo_delay_seconds(byte));
    case ControllerCurve::DELAY_FEEDBACK:
        return double(stereo_effect_feedback(byte));
    }
    return double(value);
}

std::string controller_display(unsigned number, int byte) {
    const ControllerInfo* info = find_controller(number);
    if (info == nullptr)
        return std::to_string(byte);
    const ControllerChoices& choices = info->choices;
    const int choice = byte - choices.first;
    if (!choices.labels.empty())
        return choice >= 0 && size_t(choice) < choices.labels.size()
                   ? choices.labels[size_t(choice)]
                   : std::to_string(byte);
    if (is_multiplying(number, byte))
        return MULTIPLIES_TEXT;
    return quantity_text(controller_quantity(number, byte), info->unit);
}

int nearest_value(unsigned number, double quantity) {
    const ControllerChoices& range = find_controller(number)->choices;
    return nearest_byte(range.first, range.last, [&](int byte) {
        return std::abs(controller_quantity(number, byte) - quantity);
    });
}

std::optional<int> parse_mapped_value(unsigned number, std::string_view text) {
    const std::string_view number_text = trimmed_start(text);
    if (number_text.empty() ||
        (!is_digit(number_text.front()) &&
         std::string_view("+-.").find(number_text.front()) == std::string_view::npos))
        return std::nullopt;
    const double wanted = text_to_number(text);
    return nearest_byte(0, 127, [&](int byte) {
        return std::abs(double(map_char_to_float(number, byte)) - wanted);
    });
}

bool is_multiplying(unsigned number, int byte) {
    return is_modulation_amount(number) && byte == MULTIPLYING_AMOUNT;
}

} // namespace tarquil
