// The controller table and what follows from it.

#include "softsynth/parameters/controller_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "common/assertion.h"
#include "common/number_text.h"

namespace tarquil {

namespace {

constexpr const char* OSC_TYPES[] = {"off", "sine", "saw", "square", "triangle", "noise"};
constexpr const char* SWITCH[] = {"off", "on"};
constexpr const char* FILTER_TYPES[] = {"off",     "lowpass",    "highpass",  "bandpass",  "notch",
                                        "allpass", "peaking eq", "low shelf", "high shelf"};
constexpr const char* VOICE_FILTER_TYPES[] = {
    "off",
    "lowpass",
    "highpass",
    "bandpass",
    "notch",
    "allpass",
    "peaking eq",
    "low shelf",
    "high shelf",
    "waveshaper",
    "shaped lowpass",
    "shaped highpass",
    "shaped bandpass",
    "shaped notch",
    "shaped allpass",
    "shaped peaking eq",
    "shaped low shelf",
    "shaped high shelf",
    "ladder LP 6 dB/oct",
    "ladder LP 12 dB/oct",
    "ladder LP 18 dB/oct",
    "ladder LP 24 dB/oct",
    "ladder HP 24 dB/oct",
    "ladder BP 24 dB/oct",
    "ladder notch",
};
constexpr const char* FILTER_DEPTHS[] = {"off", "12 dB/oct", "24 dB/oct", "36 dB/oct", "48 dB/oct"};
constexpr const char* MONO_EFFECT_TYPES[] = {"off",   "distortion", "compressor",
                                             "lo-fi", "filter",     "exciter"};
constexpr const char* STEREO_EFFECT_TYPES[] = {"off", "delay", "chorus", "flanger"};
constexpr const char* INFLUENCES[] = {"none",         "envelope 1", "envelope 2",   "envelope 3",
                                      "LFO 1",        "LFO 2",      "oscillator 1", "oscillator 2",
                                      "oscillator 3", "resonance"};

constexpr ControllerMapping UNMAPPED{};
constexpr ControllerChoices ANY{};

constexpr ControllerMapping mapped(float offset, float scale) {
    return {true, offset, scale};
}

constexpr ControllerChoices choices(std::span<const char* const> labels) {
    return {0, uint8_t(labels.size() - 1), labels};
}

constexpr ControllerInfo ROWS[] = {
#define MAPPED(offset, scale) mapped(offset, scale)
#define VALUE(number)                                                                              \
    ControllerDefault {                                                                            \
        false, number                                                                              \
    }
#define BYTE(number)                                                                               \
    ControllerDefault {                                                                            \
        true, number                                                                               \
    }
#define CHOICES(list) choices(list)
#define FIRST_CHOICES(list, last) choices(std::span<const char* const>(list).first((last) + 1))
#define BETWEEN(first, last)                                                                       \
    ControllerChoices {                                                                            \
        first, last, {}                                                                            \
    }
#define CONTROLLER(number, enumerator, key, name, scope, mapping, fallback, choices, curve, unit)  \
    {CTRL_##enumerator,      key,       name, ControllerScope::scope, mapping, fallback, choices,  \
     ControllerCurve::curve, Unit::unit},
#include "softsynth/parameters/controllers.def"
#undef CONTROLLER
#undef BETWEEN
#undef FIRST_CHOICES
#undef CHOICES
#undef BYTE
#undef VALUE
#undef MAPPED
};

constexpr std::span<const ControllerInfo, NUM_KEYED_CONTROLLERS> ALL_ROWS(ROWS);

constexpr auto NO_ROW = uint8_t(255);

constexpr std::array<uint8_t, NUM_CONTROLLERS> ROW_OF_NUMBER = [] {
    std::array<uint8_t, NUM_CONTROLLERS> rows{};
    rows.fill(NO_ROW);
    for (unsigned i = 0; i < NUM_KEYED_CONTROLLERS; i++)
        rows[ROWS[i].number] = uint8_t(i);
    return rows;
}();

constexpr std::array<const ControllerInfo*, NUM_KEYED_CONTROLLERS> ROWS_BY_KEY = [] {
    std::array<const ControllerInfo*, NUM_KEYED_CONTROLLERS> sorted{};
    for (unsigned i = 0; i < NUM_KEYED_CONTROLLERS; i++)
        sorted[i] = &ROWS[i];
    std::sort(sorted.begin(), sorted.end(), [](const ControllerInfo* a, const ControllerInfo* b) {
        return std::string_view(a->key) < b->key;
    });
    return sorted;
}();

constexpr bool channel_rows_come_first() {
    for (unsigned i = 0; i < NUM_KEYED_CONTROLLERS; i++) {
        if ((ROWS[i].scope == ControllerScope::CHANNEL) != (i < NUM_CHANNEL_CONTROLLERS))
            return false;
    }
    return true;
}
static_assert(channel_rows_come_first());

} // namespace

std::span<const ControllerInfo, NUM_KEYED_CONTROLLERS> controller_rows() {
    return ALL_ROWS;
}

std::span<const ControllerInfo, NUM_CHANNEL_CONTROLLERS> channel_controller_rows() {
    return ALL_ROWS.first<NUM_CHANNEL_CONTROLLERS>();
}

std::span<const ControllerInfo, NUM_GLOBAL_CONTROLLERS> global_controller_rows() {
    return ALL_ROWS.last<NUM_GLOBAL_CONTROLLERS>();
}

const ControllerInfo* find_controller(unsigned number) {
    if (number >= NUM_CONTROLLERS || ROW_OF_NUMBER[number] == NO_ROW)
        return nullptr;
    return &ROWS[ROW_OF_NUMBER[number]];
}

bool is_global_controller(unsigned number) {
    const ControllerInfo* info = find_controller(number);
    return info != nullptr && info->scope != ControllerScope::CHANNEL;
}

bool is_channel_controller(unsigned number) {
    const ControllerInfo* info = find_controller(number);
    return info != nullptr && info->scope == ControllerScope::CHANNEL;
}

bool is_constant_controller(unsigned number) {
    const ControllerInfo* info = find_controller(number);
    return info != nullptr && info->scope == ControllerScope::GLOBAL_CONSTANT;
}

const ControllerInfo* find_controller_by_key(std::string_view key) {
    const auto* const found = std::lower_bound(
        ROWS_BY_KEY.begin(), ROWS_BY_KEY.end(), key,
        [](const ControllerInfo* info, std::string_view k) { return info->key < k; });
    return found != ROWS_BY_KEY.end() && (*found)->key == key ? *found : nullptr;
}

float map_char_to_float(unsigned number, int value) {
    const ControllerInfo* info = find_controller(number);
    if (info == nullptr || !info->mapping.exists)
        return float(value);
    return info->mapping.offset + info->mapping.scale * float(value);
}

NearestByte nearest_byte(unsigned number, float value) {
    const ControllerInfo* info = find_controller(number);
    const bool exists = info != nullptr && info->mapping.exists;
    const float offset = exists ? info->mapping.offset : 0.0F;
    const float scale = exists ? info->mapping.scale : 1.0F;
    const float position = (value - offset) / scale + 0.5F;
    // The comparisons come before the conversion, which only holds for values that fit.  Truncation
    // turns everything above -1 into 0.
    if (position > -1.0F && position < 128.0F)
        return {int(position), true};
    return {position >= 128.0F ? 127 : 0, false};
}

int map_float_to_char(unsigned number, float value) {
    const NearestByte nearest = nearest_byte(number, value);
    if (!nearest.in_range)
        std::printf("Controller %u value %s out of range, clamping to lowest\n", number,
                    number_to_text(double(value)).c_str());
    TARQ_ASSERT(nearest.byte >= 0);
    TARQ_ASSERT(nearest.byte < 128);
    return nearest.byte;
}

int default_byte(const ControllerInfo& info) {
    if (info.default_value.is_byte)
        return int(info.default_value.value);
    return map_float_to_char(info.number, info.default_value.value);
}

int filter_controller(unsigned number, int value) {
    const ControllerInfo* info = find_controller(number);
    if (info == nullptr)
        return value;
    if (value < info->choices.first)
        return info->choices.first;
    return value > info->choices.last ? info->choices.last : value;
}

} // namespace tarquil
