// What has no effect now.

#include "softsynth/parameters/control_use.h"

#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/mono_effect_quantities.h"
#include "softsynth/parameters/osc_type.h"

namespace tarquil {

namespace {

// It is on, and its level in the mix is not 0 or it is a source of modulation.  The first one
// always leaves its rounding in the mix, even where the second one is all that is heard.
bool is_oscillator_heard(const ControllerBytes& bytes, unsigned index) {
    if (bytes[oscillator_rows(index).type] == OSC_NONE)
        return false;
    if (is_modulation_source(INFL_OSC1 + index, bytes))
        return true;
    if (index == 2)
        return bytes[CTRL_OSC3_VOLUME] != 0;
    return index == 0 || bytes[CTRL_OSC1_OSC2_RING_MODULATOR] != 0 || bytes[CTRL_OSC1_OSC2_MIX] > 0;
}

bool has_voice_filter_sections(const ControllerBytes& bytes) {
    return has_filter_sections(FilterType(bytes[CTRL_FILTER1_TYPE]), bytes[CTRL_FILTER1_DEPTH]);
}

// The resonance is also a source of modulation, whether the filter is on or not.
bool is_resonance_used(const ControllerBytes& bytes) {
    return has_voice_filter_sections(bytes) ||
           bytes[modulation_rows(AMPLITUDE_SLOT).source] == INFL_RESONANCE;
}

bool is_target_used(const ControllerBytes& bytes, unsigned slot) {
    if (slot == AMPLITUDE_SLOT)
        return true;
    if (slot == RESONANCE_SLOT)
        return is_resonance_used(bytes);
    return slot >= FIRST_CUTOFF_SLOT ? has_voice_filter_sections(bytes)
                                     : is_oscillator_heard(bytes, slot - FIRST_PITCH_SLOT);
}

// What a family of rows says of a controller.
enum class Use { NOT_MINE, UNUSED, USED };

Use used_if(bool condition) {
    return condition ? Use::USED : Use::UNUSED;
}

Use modulation_use(unsigned number, const ControllerBytes& bytes) {
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const ModulationRows rows = modulation_rows(slot);
        const bool acts = bytes[rows.source] != INFL_NONE && is_target_used(bytes, slot);
        if (number == rows.amount)
            return used_if(acts);
        if (number == rows.fine_amount)
            return used_if(acts && bytes[rows.amount] != MULTIPLYING_AMOUNT);
    }
    return Use::NOT_MINE;
}

Use filter_use(unsigned number, const ControllerBytes& bytes, const FilterRows& rows) {
    const auto type = FilterType(bytes[rows.type]);
    if (number == rows.gain)
        return used_if(has_filter_gain(type));
    if (number == rows.cutoff || number == rows.resonance)
        return used_if(type != FILTER_NONE);
    return Use::NOT_MINE;
}

Use equaliser_use(unsigned number, const ControllerBytes& bytes) {
    Use use = Use::NOT_MINE;
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS && use == Use::NOT_MINE; i++)
        use = filter_use(number, bytes, channel_filter_rows(i));
    for (unsigned i = 0; i < NUM_GLOBAL_FILTERS && use == Use::NOT_MINE; i++)
        use = filter_use(number, bytes, global_filter_rows(i));
    return use;
}

Use oscillator_use(unsigned number, const ControllerBytes& bytes) {
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        const OscillatorRows rows = oscillator_rows(i);
        const bool is_heard = is_oscillator_heard(bytes, i);
        if (number == rows.coarse_tune || number == rows.fine_tune)
            return used_if(is_heard);
        // Copies that are not heard also draw from the random phases of those that are.
        if (number == rows.copies)
            return used_if(is_heard || bytes[CTRL_OSC1_RANDOMIZE_PHASE] != 0);
        if (number == rows.spread)
            return used_if(is_heard && bytes[rows.copies] != 0);
        if (number == rows.random_phase)
            return used_if(i == 0);
    }
    return Use::NOT_MINE;
}

Use source_use(unsigned number, const ControllerBytes& bytes) {
    for (unsigned i = 1; i < NUM_ENVELOPES; i++) {
        const EnvelopeRows rows = envelope_rows(i);
        if (number == rows.attack || number == rows.decay || number == rows.sustain ||
            number == rows.release)
            return used_if(is_modulation_source(INFL_ENV1 + i, bytes));
    }
    for (unsigned i = 0; i < NUM_LFOS; i++) {
        const LfoRows rows = lfo_rows(i);
        if (number == rows.speed || number == rows.phase)
            return used_if(is_modulation_source(INFL_LFO1 + i, bytes) &&
                           bytes[rows.type] != OSC_NONE);
    }
    return Use::NOT_MINE;
}

// Which parameters an insert effect has is in its meanings; those of its filter also depend on each
// other.
Use mono_effect_use(unsigned number, const ControllerBytes& bytes) {
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        const EffectRows rows = mono_effect_rows(i);
        if (bytes[rows.type] != MONO_EFFECT_FILTER)
            continue;
        const FilterType type = mono_filter_type(bytes[rows.parameter(2)]);
        const int depth = mono_filter_depth(bytes[rows.parameter(3)]);
        if (number == rows.parameter(0) || number == rows.parameter(1))
            return used_if(has_filter_sections(type, depth));
        if (number == rows.parameter(3))
            return used_if(has_filter_depth(type));
    }
    return Use::NOT_MINE;
}

} // namespace

bool is_modulation_source(unsigned source, const ControllerBytes& bytes) {
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        if (bytes[modulation_rows(slot).source] == source)
            return true;
    }
    return false;
}

bool is_controller_used(unsigned number, const ControllerBytes& bytes) {
    for (const auto family :
         {modulation_use, equaliser_use, oscillator_use, source_use, mono_effect_use}) {
        const Use use = family(number, bytes);
        if (use != Use::NOT_MINE)
            return use == Use::USED;
    }
    switch (number) {
    case CTRL_FILTER1_DEPTH:
        return has_filter_depth(FilterType(bytes[CTRL_FILTER1_TYPE]));
    case CTRL_FILTER1_KEY_FOLLOW:
    case CTRL_FILTER1_CUTOFF:
        return has_voice_filter_sections(bytes);
    case CTRL_FILTER1_RESONANCE:
        return is_resonance_used(bytes);
    case CTRL_OSC1_OSC2_MIX:
        return bytes[CTRL_OSC1_OSC2_RING_MODULATOR] == 0;
    // Nothing renders LPC samples.
    case CTRL_LPC_SELECT:
    case CTRL_LPC_SPEED:
        return false;
    case CTRL_CHANFX2_WET:
        return bytes[CTRL_CHANFX2_TYPE] != STEREO_EFFECT_OFF;
    case CTRL_RETRIGGER_BPM:
    case CTRL_RETRIGGER_WET_LEVEL:
        return bytes[CTRL_RETRIGGER_SPEEDUP] != default_controller_bytes()[CTRL_RETRIGGER_SPEEDUP];
    default:
        return true;
    }
}

} // namespace tarquil
