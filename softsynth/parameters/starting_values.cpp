// Where the controllers of an effect or a filter start when its type is chosen by hand.
//
// Each type leaves a middle C of the built-in sound within a few dB of what it was and changes it.

#include "softsynth/parameters/starting_values.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/parameters/osc_type.h"

namespace tarquil {

namespace {

// Of all controllers that go with a type: cutoff and so on.
using Values = std::vector<StartingValue>;
using EffectBytes = std::array<uint8_t, NUM_EFFECT_PARAMETERS>;

// Threshold, drive, post gain, asymmetry.
constexpr EffectBytes DISTORTION = {58, 80, 78, 0, 0}; // -17 dB, 9, 5 dB
// Threshold, ratio, attack, release, makeup.
constexpr EffectBytes COMPRESSOR = {55, 25, 80, 34, 54}; // -18 dB, 4, 5 ms, 100 ms, 4 dB
constexpr EffectBytes LOFI = {75, 3, 0, 0, 0};           // 14 bits off, held for 4
// Cutoff, resonance, type, depth.
constexpr EffectBytes INSERT_FILTER = {84, 12, FILTER_LOWPASS, 1, 0}; // 1.96 kHz, 0.71
constexpr EffectBytes EXCITER = {100, 0, 0, 0, 0};                    // 0.18

// Left time, right time, feedback.
constexpr EffectBytes STEREO_DELAY = {31, 47, 56, 0, 0}; // 0.25 s, 0.38 s, 0.4
// Delay, speed, depth, wave (and feedback).
constexpr EffectBytes CHORUS = {40, 65, 88, OSC_SINE, 0};   // 23 ms, 0.8 Hz, 2 ms
constexpr EffectBytes FLANGER = {40, 41, 70, OSC_SINE, 71}; // 2 ms, 0.2 Hz, 1 ms, 0.5

// Cutoffs, where they change a middle C (262 Hz and its harmonics) and leave much of it.
constexpr uint8_t CUTOFF_200_HZ = 42;
constexpr uint8_t CUTOFF_300_HZ = 50;
constexpr uint8_t CUTOFF_500_HZ = 59;
constexpr uint8_t CUTOFF_1_KHZ = 72;
constexpr uint8_t CUTOFF_2_KHZ = 84;
constexpr uint8_t USUAL = 255; // the default
constexpr uint8_t WIDE = 12;   // a resonance of 0.71, without a peak
constexpr uint8_t SHARP = 68;  // 4: the allpass is the louder, the wider it is
constexpr uint8_t PEAKED = 42; // 2.5
constexpr uint8_t GAIN_6_DB = 83;

struct FilterStart {
    uint8_t cutoff;
    uint8_t resonance;
};

// Four lowpasses, a highpass, a bandpass, a notch.
constexpr FilterStart LADDERS[] = {
    {CUTOFF_2_KHZ, USUAL}, {CUTOFF_2_KHZ, USUAL},   {CUTOFF_2_KHZ, USUAL}, {CUTOFF_2_KHZ, USUAL},
    {CUTOFF_500_HZ, 0},    {CUTOFF_300_HZ, PEAKED}, {CUTOFF_2_KHZ, 0}};

uint8_t biquad_cutoff(FilterType type) {
    switch (type) {
    case FILTER_LOWPASS:
    case FILTER_HIGH_SHELF:
        return CUTOFF_2_KHZ;
    case FILTER_HIGHPASS:
    case FILTER_LOW_SHELF:
        return CUTOFF_200_HZ;
    case FILTER_BANDPASS:
        return CUTOFF_500_HZ;
    default:
        return CUTOFF_1_KHZ;
    }
}

FilterStart filter_start(FilterType type) {
    if (is_ladder_filter(type))
        return LADDERS[type - FILTER_LADDER_START_MARKER];
    const auto base = FilterType(type % NUM_BASE_FILTER_TYPES);
    if (base == FILTER_BANDPASS)
        return {biquad_cutoff(base), WIDE};
    return {biquad_cutoff(base), base == FILTER_ALLPASS ? SHARP : USUAL};
}

const EffectBytes& mono_effect_start(unsigned type, const EffectBytes& defaults) {
    switch (type) {
    case MONO_EFFECT_DISTORTION:
        return DISTORTION;
    case MONO_EFFECT_COMPRESSOR:
        return COMPRESSOR;
    case MONO_EFFECT_LOFI:
        return LOFI;
    case MONO_EFFECT_FILTER:
        return INSERT_FILTER;
    case MONO_EFFECT_EXCITER:
        return EXCITER;
    default:
        return defaults;
    }
}

const EffectBytes& stereo_effect_start(unsigned type, const EffectBytes& defaults) {
    switch (type) {
    case STEREO_EFFECT_DELAY:
        return STEREO_DELAY;
    case STEREO_EFFECT_CHORUS:
        return CHORUS;
    case STEREO_EFFECT_FLANGER:
        return FLANGER;
    default:
        return defaults;
    }
}

Values default_values(std::initializer_list<unsigned> numbers) {
    Values values;
    for (const unsigned number : numbers)
        values.push_back({number, default_controller_bytes()[number]});
    return values;
}

template <typename Start> Values effect_values(const EffectRows& rows, int type, Start start) {
    EffectBytes defaults{};
    for (unsigned i = 0; i < NUM_EFFECT_PARAMETERS; i++)
        defaults[i] = default_controller_bytes()[rows.parameter(i)];
    Values values;
    for (unsigned i = 0; i < NUM_EFFECT_PARAMETERS; i++)
        values.push_back({rows.parameter(i), start(unsigned(type), defaults)[i]});
    return values;
}

// Of cutoff and resonance, which come first.
void set_start(Values& values, FilterType type) {
    const FilterStart start = filter_start(type);
    values[0].byte = start.cutoff;
    if (start.resonance != USUAL)
        values[1].byte = start.resonance;
}

Values equaliser_values(const FilterRows& rows, int byte) {
    Values values = default_values({rows.cutoff, rows.resonance, rows.gain});
    const auto type = FilterType(byte);
    if (type == FILTER_NONE)
        return values;
    set_start(values, type);
    if (has_filter_gain(type))
        values[2].byte = GAIN_6_DB;
    return values;
}

Values voice_filter_values(int byte) {
    Values values =
        default_values({CTRL_FILTER1_CUTOFF, CTRL_FILTER1_RESONANCE, CTRL_FILTER1_DEPTH});
    const auto type = FilterType(byte);
    if (type % NUM_BASE_FILTER_TYPES == FILTER_NONE && !is_ladder_filter(type))
        return values; // off, or the waveshaper alone
    set_start(values, type);
    if (!is_ladder_filter(type))
        values[2].byte = 1;
    return values;
}

// Empty for a controller that chooses no type.
Values values_of_type(unsigned number, int byte) {
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        if (number == mono_effect_rows(i).type)
            return effect_values(mono_effect_rows(i), byte, mono_effect_start);
    }
    if (number == STEREO_EFFECT_ROWS.type)
        return effect_values(STEREO_EFFECT_ROWS, byte, stereo_effect_start);
    if (number == CTRL_FILTER1_TYPE)
        return voice_filter_values(byte);
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++) {
        if (number == channel_filter_rows(i).type)
            return equaliser_values(channel_filter_rows(i), byte);
    }
    for (unsigned i = 0; i < NUM_GLOBAL_FILTERS; i++) {
        if (number == global_filter_rows(i).type)
            return equaliser_values(global_filter_rows(i), byte);
    }
    return {};
}

bool stand_at(const Values& values, const ControllerBytes& bytes) {
    return std::all_of(values.begin(), values.end(), [&](const StartingValue& value) {
        return bytes[value.number] == value.byte;
    });
}

bool stand_at_defaults(const Values& values, const ControllerBytes& bytes) {
    return std::all_of(values.begin(), values.end(), [&](const StartingValue& value) {
        return bytes[value.number] == default_controller_bytes()[value.number];
    });
}

} // namespace

std::vector<StartingValue> starting_values(unsigned number, int byte,
                                           const ControllerBytes& bytes) {
    Values values = values_of_type(number, byte);
    if (!stand_at_defaults(values, bytes) &&
        !stand_at(values_of_type(number, bytes[number]), bytes))
        return {};
    std::erase_if(values,
                  [&](const StartingValue& value) { return bytes[value.number] == value.byte; });
    return values;
}

} // namespace tarquil
