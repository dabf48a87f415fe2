// What a controller means while the others are as they are.

#include "softsynth/parameters/control_meaning.h"

#include "softsynth/parameters/control_use.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_quantities.h"
#include "softsynth/parameters/mono_effect_quantities.h"
#include "softsynth/parameters/stereo_effect_quantities.h"

namespace tarquil {

namespace {

// A parameter that the type of its effect gives a meaning; without a label it has none.
struct EffectParameter {
    const char* label = "";
    double (*quantity)(int byte) = nullptr;
    Unit unit = Unit::NONE;
    unsigned listed_as = 0; // the controller that picks from the same list
};

using EffectParameters = EffectParameter[NUM_EFFECT_PARAMETERS];

// One of the effects' own functions.
template <auto function> double effect_quantity(int byte) {
    return double(function(byte));
}

// The filter's cutoff and resonance are mapped as those of the other filters.
double filter_cutoff(int byte) {
    return cutoff_hertz(map_char_to_float(CTRL_CHANFX1_PARAM1, byte));
}
double filter_resonance(int byte) {
    return double(map_char_to_float(CTRL_CHANFX1_PARAM2, byte));
}

double lfo_wave(int byte) {
    return double(byte);
}

constexpr EffectParameter NO_PARAMETER;

const EffectParameter& mono_effect_parameter(unsigned type, unsigned index) {
    static constexpr EffectParameters DISTORTION = {
        {"Threshold", effect_quantity<distortion_threshold>, Unit::LEVEL},
        {"Drive", effect_quantity<distortion_effective_drive>, Unit::LEVEL},
        {"Post gain", effect_quantity<distortion_post_gain>, Unit::LEVEL},
        {"Asymmetry", effect_quantity<distortion_asymmetry>}};
    static constexpr EffectParameters COMPRESSOR = {
        {"Threshold", effect_quantity<mono_effect_threshold>, Unit::LEVEL},
        {"Ratio", effect_quantity<mono_compressor_effective_ratio>, Unit::RATIO},
        {"Attack", effect_quantity<mono_compressor_attack>, Unit::SECONDS},
        {"Release", effect_quantity<mono_compressor_release>, Unit::SECONDS},
        {"Makeup", effect_quantity<mono_compressor_makeup>, Unit::LEVEL}};
    static constexpr EffectParameters LOFI = {
        {"Bits off", effect_quantity<lofi_bits_off>, Unit::BITS},
        {"Hold", effect_quantity<lofi_period>, Unit::HELD_SAMPLES}};
    static constexpr EffectParameters FILTER = {
        {"Cutoff", filter_cutoff, Unit::HERTZ},
        {"Resonance", filter_resonance, Unit::Q},
        {"Type", effect_quantity<mono_filter_type>, Unit::NONE, CTRL_FILTER1_TYPE},
        {"Depth", effect_quantity<mono_filter_depth>, Unit::NONE, CTRL_FILTER1_DEPTH}};
    static constexpr EffectParameters EXCITER = {{"Amount", effect_quantity<exciter_amount>}};
    switch (type) {
    case MONO_EFFECT_DISTORTION:
        return DISTORTION[index];
    case MONO_EFFECT_COMPRESSOR:
        return COMPRESSOR[index];
    case MONO_EFFECT_LOFI:
        return LOFI[index];
    case MONO_EFFECT_FILTER:
        return FILTER[index];
    case MONO_EFFECT_EXCITER:
        return EXCITER[index];
    default:
        return NO_PARAMETER;
    }
}

const EffectParameter& stereo_effect_parameter(unsigned type, unsigned index) {
    static constexpr EffectParameter SPEED = {"LFO speed", effect_quantity<stereo_lfo_hz>,
                                              Unit::HERTZ};
    static constexpr EffectParameter SWEEP = {"LFO depth", effect_quantity<stereo_lfo_samples>,
                                              Unit::SAMPLES};
    static constexpr EffectParameter WAVE = {"LFO wave", lfo_wave, Unit::NONE, CTRL_OSC1_TYPE};
    static constexpr EffectParameter FEEDBACK = {"Feedback",
                                                 effect_quantity<stereo_effect_feedback>};
    static constexpr EffectParameters DELAY = {
        {"Left time", effect_quantity<stereo_delay_seconds>, Unit::SECONDS},
        {"Right time", effect_quantity<stereo_delay_seconds>, Unit::SECONDS},
        FEEDBACK};
    static constexpr EffectParameters CHORUS = {
        {"Delay", effect_quantity<chorus_delay_samples>, Unit::SAMPLES}, SPEED, SWEEP, WAVE};
    static constexpr EffectParameters FLANGER = {
        {"Delay", effect_quantity<flanger_delay_samples>, Unit::SAMPLES},
        SPEED,
        SWEEP,
        WAVE,
        FEEDBACK};
    switch (type) {
    case STEREO_EFFECT_DELAY:
        return DELAY[index];
    case STEREO_EFFECT_CHORUS:
        return CHORUS[index];
    case STEREO_EFFECT_FLANGER:
        return FLANGER[index];
    default:
        return NO_PARAMETER;
    }
}

ControlMeaning meaning_of(const EffectParameter& parameter) {
    ControlMeaning meaning{parameter.label, parameter.quantity, parameter.unit};
    if (parameter.listed_as != 0)
        meaning.choices = find_controller(parameter.listed_as)->choices.labels;
    meaning.is_used = parameter.label[0] != '\0';
    return meaning;
}

// What an effect's parameters mean depends on its type.
ControlMeaning own_meaning(unsigned number, const ControllerBytes& bytes) {
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        const EffectRows rows = mono_effect_rows(i);
        if (number - rows.first_parameter < NUM_EFFECT_PARAMETERS)
            return meaning_of(
                mono_effect_parameter(bytes[rows.type], number - rows.first_parameter));
    }
    const EffectRows& stereo = STEREO_EFFECT_ROWS;
    if (number - stereo.first_parameter < NUM_EFFECT_PARAMETERS)
        return meaning_of(
            stereo_effect_parameter(bytes[stereo.type], number - stereo.first_parameter));
    const ControllerInfo& info = *find_controller(number);
    return {"", nullptr, info.unit, info.choices.labels, true};
}

} // namespace

ControlMeaning meaning_of(unsigned number, const ControllerBytes& bytes) {
    ControlMeaning meaning = own_meaning(number, bytes);
    meaning.is_used = meaning.is_used && is_controller_used(number, bytes);
    return meaning;
}

double quantity_of(unsigned number, int byte, const ControlMeaning& meaning) {
    if (meaning.quantity != nullptr)
        return meaning.quantity(byte);
    if (!meaning.choices.empty())
        return double(byte - find_controller(number)->choices.first);
    return controller_quantity(number, byte);
}

} // namespace tarquil
