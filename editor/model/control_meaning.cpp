// What a controller means while the others are as they are.

#include "editor/model/control_meaning.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "curves/filter_response.h"
#include "softsynth/effects/mono_effect.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/mono_effect_quantities.h"
#include "softsynth/parameters/stereo_effect_quantities.h"
#include "softsynth/voices/influence.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_PARAMETERS = 5; // of an effect

std::span<const char* const> choices_of(unsigned number) {
    return find_controller(number)->choices.labels;
}

// A byte that wraps round its list of choices is shown by where it lands.
double filter_type_index(int p) {
    return mono_filter_type(p);
}
double filter_depth_index(int p) {
    return mono_filter_depth(p);
}

const ControlMeaning UNUSED{"", nullptr, "", {}, false};

ControlMeaning mono_effect_meaning(int type, unsigned parameter) {
    static const ControlMeaning DISTORTION[NUM_PARAMETERS] = {
        {"Threshold", [](int p) { return double(distortion_threshold(p)); }, "level"},
        {"Drive", [](int p) { return double(distortion_drive(p)); }, "level"},
        {"Post gain", [](int p) { return double(distortion_post_gain(p)); }, "level"},
        {"Asymmetry", [](int p) { return double(distortion_asymmetry(p)); }},
        UNUSED};
    static const ControlMeaning COMPRESSOR[NUM_PARAMETERS] = {
        {"Threshold", [](int p) { return double(mono_effect_threshold(p)); }, "level"},
        {"Ratio", [](int p) { return double(mono_compressor_ratio(p)); }, ":1"},
        {"Attack", [](int p) { return double(mono_compressor_attack(p)); }, "s"},
        {"Release", [](int p) { return double(mono_compressor_release(p)); }, "s"},
        {"Makeup", [](int p) { return double(mono_compressor_makeup(p)); }, "level"}};
    static const ControlMeaning LOFI[NUM_PARAMETERS] = {
        {"Bits off", [](int p) { return double(lofi_bits_off(p)); }, "bits"},
        {"Hold", [](int p) { return double(lofi_period(p)); }, "samples"},
        UNUSED,
        UNUSED,
        UNUSED};
    static const ControlMeaning FILTER[NUM_PARAMETERS] = {
        {"Cutoff",
         [](int p) { return 20.0 * std::exp2(double(map_char_to_float(CTRL_CHANFX1_PARAM1, p))); },
         "Hz"},
        {"Resonance", [](int p) { return double(map_char_to_float(CTRL_CHANFX1_PARAM2, p)); }, "Q"},
        {"Type", filter_type_index, "", choices_of(CTRL_FILTER1_TYPE)},
        {"Depth", filter_depth_index, "", choices_of(CTRL_FILTER1_DEPTH)},
        UNUSED};
    static const ControlMeaning EXCITER[NUM_PARAMETERS] = {
        {"Amount", [](int p) { return double(exciter_amount(p)); }},
        UNUSED,
        UNUSED,
        UNUSED,
        UNUSED};
    switch (type) {
    case MonoEffect::MONO_EFFECT_DISTORTION:
        return DISTORTION[parameter];
    case MonoEffect::MONO_EFFECT_COMPRESSOR:
        return COMPRESSOR[parameter];
    case MonoEffect::MONO_EFFECT_LOFI:
        return LOFI[parameter];
    case MonoEffect::MONO_EFFECT_FILTER:
        return FILTER[parameter];
    case MonoEffect::MONO_EFFECT_EXCITER:
        return EXCITER[parameter];
    default:
        return UNUSED;
    }
}

double in_seconds(float samples) {
    return double(samples) / SAMPLE_RATE;
}

ControlMeaning stereo_effect_meaning(int type, unsigned parameter) {
    static const ControlMeaning DELAY[NUM_PARAMETERS] = {
        {"Left time", [](int p) { return double(stereo_delay_seconds(p)); }, "s"},
        {"Right time", [](int p) { return double(stereo_delay_seconds(p)); }, "s"},
        {"Feedback", [](int p) { return double(stereo_effect_feedback(p)); }},
        UNUSED,
        UNUSED};
    static const ControlMeaning SPEED = {"LFO speed",
                                         [](int p) { return double(stereo_lfo_hz(p)); }, "Hz"};
    static const ControlMeaning SWEEP = {
        "LFO depth", [](int p) { return in_seconds(stereo_lfo_samples(p)); }, "s"};
    static const ControlMeaning WAVE = {"LFO wave", [](int p) { return double(p); }, "",
                                        choices_of(CTRL_OSC1_TYPE)};
    static const ControlMeaning CHORUS[NUM_PARAMETERS] = {
        {"Delay", [](int p) { return in_seconds(chorus_delay_samples(p)); }, "s"},
        SPEED,
        SWEEP,
        WAVE,
        UNUSED};
    static const ControlMeaning FLANGER[NUM_PARAMETERS] = {
        {"Delay", [](int p) { return in_seconds(flanger_delay_samples(p)); }, "s"},
        SPEED,
        SWEEP,
        WAVE,
        {"Feedback", [](int p) { return double(stereo_effect_feedback(p)); }}};
    switch (type) {
    case StereoEffect::STEREO_EFFECT_DELAY:
        return DELAY[parameter];
    case StereoEffect::STEREO_EFFECT_CHORUS:
        return CHORUS[parameter];
    case StereoEffect::STEREO_EFFECT_FLANGER:
        return FLANGER[parameter];
    default:
        return UNUSED;
    }
}

// The position in a run of `size` controllers that start at `first`, if it is one of them.
bool is_in_run(unsigned number, unsigned first, unsigned size, unsigned& index) {
    index = number - first;
    return number >= first && index < size;
}

// The level of group `index` in the mix is not 0, or it is a source of modulation.
bool is_oscillator_heard(const ControllerBytes& bytes, unsigned index) {
    for (unsigned slot = CTRL_OSC1_INFLUENCE_SOURCE; slot <= CTRL_AMPLITUDE_INFLUENCE_SOURCE;
         slot++) {
        if (bytes[slot] == INFL_OSC1 + index)
            return true;
    }
    if (index == 2)
        return bytes[CTRL_OSC3_VOLUME] != 0;
    if (bytes[CTRL_OSC1_OSC2_RING_MODULATOR] != 0)
        return true;
    return index == 0 ? bytes[CTRL_OSC1_OSC2_MIX] < 127 : bytes[CTRL_OSC1_OSC2_MIX] > 0;
}

bool is_source_used(const ControllerBytes& bytes, unsigned source) {
    for (unsigned slot = CTRL_OSC1_INFLUENCE_SOURCE; slot <= CTRL_AMPLITUDE_INFLUENCE_SOURCE;
         slot++) {
        if (bytes[slot] == source)
            return true;
    }
    return false;
}

// Q and gain count for some types only; the cutoff and the rest while the filter is on.
bool is_equaliser_part_used(const ControllerBytes& bytes, unsigned first, unsigned part) {
    constexpr unsigned GAIN = CTRL_CHAN_FILTER1_GAIN - CTRL_CHAN_FILTER1_TYPE;
    const unsigned type = bytes[first];
    if (part == GAIN)
        return type >= FILTER_PEAKING_EQ;
    return part == 0 || type != FILTER_NONE;
}

bool is_used(unsigned number, const ControllerBytes& bytes) {
    unsigned index = 0;
    constexpr unsigned NUM_SLOTS = CTRL_AMPLITUDE_INFLUENCE_SOURCE - CTRL_OSC1_INFLUENCE_SOURCE + 1;
    constexpr unsigned NUM_CHANNEL_PARTS = CTRL_CHAN_FILTER4_GAIN - CTRL_CHAN_FILTER1_TYPE + 1;
    constexpr unsigned NUM_GLOBAL_PARTS = CTRL_GLOBAL_FILTER6_GAIN - CTRL_GLOBAL_FILTER1_TYPE + 1;
    constexpr unsigned PARTS = CTRL_CHAN_FILTER2_TYPE - CTRL_CHAN_FILTER1_TYPE;
    if (is_in_run(number, CTRL_OSC1_INFLUENCE_AMOUNT, NUM_SLOTS, index) ||
        is_in_run(number, CTRL_OSC1_INFLUENCE_FINE_AMOUNT, NUM_SLOTS, index))
        return bytes[CTRL_OSC1_INFLUENCE_SOURCE + index] != INFL_NONE &&
               (number < CTRL_OSC1_INFLUENCE_FINE_AMOUNT ||
                bytes[CTRL_OSC1_INFLUENCE_AMOUNT + index] != 127);
    if (is_in_run(number, CTRL_CHAN_FILTER1_TYPE, NUM_CHANNEL_PARTS, index) ||
        is_in_run(number, CTRL_GLOBAL_FILTER1_TYPE, NUM_GLOBAL_PARTS, index))
        return is_equaliser_part_used(bytes, number - index % PARTS, index % PARTS);
    for (const unsigned first :
         {CTRL_OSC1_COARSE_TUNE, CTRL_OSC1_FINE_TUNE, CTRL_OSC1_MULTI_COUNT}) {
        if (is_in_run(number, first, 3, index))
            return bytes[CTRL_OSC1_TYPE + index] != 0 && is_oscillator_heard(bytes, index);
    }
    if (is_in_run(number, CTRL_OSC1_SPREAD, 3, index))
        return bytes[CTRL_OSC1_TYPE + index] != 0 && bytes[CTRL_OSC1_MULTI_COUNT + index] != 0 &&
               is_oscillator_heard(bytes, index);
    for (const unsigned first :
         {CTRL_ENV1_ATTACK, CTRL_ENV1_DECAY, CTRL_ENV1_SUSTAIN, CTRL_ENV1_RELEASE}) {
        if (is_in_run(number, first, 3, index))
            return index == 0 || is_source_used(bytes, INFL_ENV1 + index);
    }
    for (const unsigned first : {CTRL_LFO1_TYPE, CTRL_LFO1_SPEED, CTRL_LFO1_PHASE}) {
        if (is_in_run(number, first, 2, index))
            return number == CTRL_LFO1_TYPE + index || is_source_used(bytes, INFL_LFO1 + index);
    }
    const bool is_ladder = is_ladder_filter(FilterType(bytes[CTRL_FILTER1_TYPE]));
    switch (number) {
    case CTRL_FILTER1_DEPTH:
        return bytes[CTRL_FILTER1_TYPE] != 0 && !is_ladder;
    case CTRL_FILTER1_KEY_FOLLOW:
    case CTRL_FILTER1_CUTOFF:
    case CTRL_FILTER1_RESONANCE:
        return is_filter_on(voice_filter_settings(bytes, 69));
    case CTRL_OSC1_OSC2_MIX:
        return bytes[CTRL_OSC1_OSC2_RING_MODULATOR] == 0;
    // One control governs the phases of all three groups, and nothing renders LPC samples.
    case CTRL_OSC2_RANDOMIZE_PHASE:
    case CTRL_OSC3_RANDOMIZE_PHASE:
    case CTRL_LPC_SELECT:
    case CTRL_LPC_SPEED:
        return false;
    case CTRL_CHANFX2_WET:
        return bytes[CTRL_CHANFX2_TYPE] != 0;
    case CTRL_RETRIGGER_BPM:
    case CTRL_RETRIGGER_WET_LEVEL:
        return bytes[CTRL_RETRIGGER_SPEEDUP] != default_controller_bytes()[CTRL_RETRIGGER_SPEEDUP];
    default:
        return true;
    }
}

int choice_of(unsigned number, int byte, const ControlMeaning& meaning) {
    if (meaning.quantity != nullptr)
        return int(meaning.quantity(byte));
    return byte - find_controller(number)->choices.first;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

std::string trimmed_lower(std::string_view text) {
    std::string result;
    for (const char c : text)
        result.push_back(lower(c));
    const size_t first = result.find_first_not_of(" \t");
    if (first == std::string::npos)
        return "";
    return result.substr(first, result.find_last_not_of(" \t") + 1 - first);
}

std::optional<int> parse_choice(const std::string& text, unsigned number,
                                const ControlMeaning& meaning) {
    std::optional<int> starts;
    for (int byte = 0; byte < 128; byte++) {
        const int choice = choice_of(number, byte, meaning);
        if (choice < 0 || size_t(choice) >= meaning.choices.size())
            continue;
        const std::string label = trimmed_lower(meaning.choices[size_t(choice)]);
        if (label == text)
            return byte;
        if (!starts && label.starts_with(text))
            starts = byte;
    }
    return starts;
}

struct TypedNumber {
    double value = 0.0;
    std::string unit; // behind it
};

std::optional<TypedNumber> parse_number(std::string text) {
    std::replace(text.begin(), text.end(), ',', '.');
    if (text.starts_with("q ")) // "Q 1.5"
        text.erase(0, 2);
    if (text.starts_with('+'))
        text.erase(0, 1);
    TypedNumber number;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number.value);
    if (error != std::errc() || std::isnan(number.value))
        return std::nullopt;
    number.unit = trimmed_lower({rest, size_t(end - rest)});
    return number;
}

// The unit that ends a displayed value: "1.25 kHz" gives "khz".
std::string unit_of(const std::string& shown) {
    const std::optional<TypedNumber> number = parse_number(trimmed_lower(shown));
    return number ? number->unit : "";
}

// How many of the controller's own units one of `unit` is; nothing for one that does not fit.
std::optional<double> unit_factor(const std::string& unit, std::string_view own) {
    if (own == "Hz") {
        if (unit == "k" || unit == "khz")
            return 1000.0;
        return unit.empty() || unit == "hz" ? std::optional(1.0) : std::nullopt;
    }
    if (own == "s" || own == "samples") {
        const double second = own == "s" ? 1.0 : double(SAMPLE_RATE);
        if (unit == "ms")
            return second / 1000.0;
        return unit == "s" ? std::optional(second) : std::nullopt;
    }
    if (unit.empty() || own.empty())
        return unit.empty() ? std::optional(1.0) : std::nullopt;
    if (unit == "st" && own == "semitones")
        return 1.0;
    // "semitone" for "semitones", "oct" for "octaves"
    return trimmed_lower(own).starts_with(unit.substr(0, 3)) ? std::optional(1.0) : std::nullopt;
}

// Long units do not fit below a knob.
constexpr std::pair<std::string_view, std::string_view> SHORT_UNITS[] = {
    {" semitones", " st"}, {" semitone", " st"}, {" octaves", " oct"}, {" octave", " oct"}};

double distance(double a, double b) {
    return a == b ? 0.0 : std::abs(a - b);
}

} // namespace

std::string with_short_unit(std::string text) {
    for (const auto& [long_unit, short_unit] : SHORT_UNITS) {
        if (text.ends_with(long_unit))
            return text.replace(text.size() - long_unit.size(), std::string::npos, short_unit);
    }
    return text;
}

ControlMeaning meaning_of(unsigned number, const ControllerBytes& bytes) {
    unsigned parameter = 0;
    if (is_in_run(number, CTRL_CHANFX1_PARAM1, NUM_PARAMETERS, parameter))
        return mono_effect_meaning(bytes[CTRL_CHANFX1_TYPE], parameter);
    if (is_in_run(number, CTRL_CHANFX1B_PARAM1, NUM_PARAMETERS, parameter))
        return mono_effect_meaning(bytes[CTRL_CHANFX1B_TYPE], parameter);
    if (is_in_run(number, CTRL_CHANFX2_PARAM1, NUM_PARAMETERS, parameter))
        return stereo_effect_meaning(bytes[CTRL_CHANFX2_TYPE], parameter);
    ControlMeaning meaning;
    const ControllerInfo* info = find_controller(number);
    meaning.unit = info->unit;
    meaning.choices = info->choices.labels;
    meaning.is_used = is_used(number, bytes);
    return meaning;
}

std::string control_label(unsigned number, const ControllerBytes& bytes, const char* label) {
    const ControlMeaning meaning = meaning_of(number, bytes);
    return meaning.label[0] != '\0' ? meaning.label : label;
}

std::string control_text(unsigned number, int byte, const ControllerBytes& bytes) {
    const ControlMeaning meaning = meaning_of(number, bytes);
    if (!meaning.choices.empty()) {
        const int choice = choice_of(number, byte, meaning);
        if (choice >= 0 && size_t(choice) < meaning.choices.size())
            return meaning.choices[size_t(choice)];
    }
    if (meaning.quantity == nullptr)
        return with_short_unit(controller_display(number, byte));
    const std::string_view unit = meaning.unit;
    if (unit == "samples") // counted, not a time
        return std::to_string(int(meaning.quantity(byte))) + (byte == 0 ? " sample" : " samples");
    return quantity_display(meaning.quantity(byte), unit);
}

std::optional<int> parse_control(unsigned number, std::string_view typed,
                                 const ControllerBytes& bytes) {
    const ControlMeaning meaning = meaning_of(number, bytes);
    const std::string text = trimmed_lower(typed);
    if (text.empty())
        return std::nullopt;
    if (!meaning.choices.empty())
        return parse_choice(text, number, meaning);
    std::optional<TypedNumber> number_typed = parse_number(text);
    if (!number_typed)
        return std::nullopt;
    const bool is_level = std::string_view(meaning.unit) == "level";
    const bool is_count =
        meaning.quantity != nullptr && std::string_view(meaning.unit) == "samples";
    double wanted = number_typed->value;
    if (is_level) {
        if (!number_typed->unit.empty() && number_typed->unit != "db")
            return std::nullopt;
    } else if (!is_count) {
        std::string unit = number_typed->unit;
        if (unit.empty())
            unit = unit_of(control_text(number, bytes[number], bytes));
        const std::optional<double> factor = unit_factor(unit, meaning.unit);
        if (!factor)
            return std::nullopt;
        wanted *= *factor;
    }
    const ControllerInfo* info = find_controller(number);
    int best = bytes[number];
    double best_distance = std::numeric_limits<double>::infinity();
    for (int byte = info->choices.first; byte <= info->choices.last; byte++) {
        double quantity = meaning.quantity != nullptr ? meaning.quantity(byte)
                                                      : controller_quantity(number, byte);
        if (is_level)
            quantity = 20.0 * std::log10(quantity);
        if (distance(quantity, wanted) < best_distance) {
            best_distance = distance(quantity, wanted);
            best = byte;
        }
    }
    // Below everything but silence, or above everything.
    if (std::isinf(wanted))
        best = wanted < 0.0 ? info->choices.first : info->choices.last;
    return best;
}

int nearest_value(unsigned number, double quantity) {
    const ControllerChoices& range = find_controller(number)->choices;
    int best = range.first;
    for (int byte = range.first; byte <= range.last; byte++) {
        if (distance(controller_quantity(number, byte), quantity) <
            distance(controller_quantity(number, best), quantity))
            best = byte;
    }
    return best;
}

} // namespace tarquil
