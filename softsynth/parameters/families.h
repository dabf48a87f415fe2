// Rows of the controller table that belong together: a filter's four, an envelope's four and so on.
//
// Where a family's numbers lie evenly, this is the only place that knows how.

#pragma once

#include "softsynth/parameters/controller_number.h"

namespace tarquil {

struct FilterRows {
    unsigned type;
    unsigned cutoff;
    unsigned resonance;
    unsigned gain;
};

inline constexpr unsigned NUM_FILTER_ROWS = 4;
inline constexpr unsigned NUM_CHANNEL_FILTERS = 4;
inline constexpr unsigned NUM_GLOBAL_FILTERS = 6;

// The rows of the equaliser filter whose type is controller `type`.
constexpr FilterRows filter_rows(unsigned type) {
    return {type, type + 1, type + 2, type + 3};
}
constexpr FilterRows channel_filter_rows(unsigned index) {
    return filter_rows(CTRL_CHAN_FILTER1_TYPE + NUM_FILTER_ROWS * index);
}
constexpr FilterRows global_filter_rows(unsigned index) {
    return filter_rows(CTRL_GLOBAL_FILTER1_TYPE + NUM_FILTER_ROWS * index);
}
static_assert(channel_filter_rows(0).cutoff == CTRL_CHAN_FILTER1_CUTOFF &&
              channel_filter_rows(2).resonance == CTRL_CHAN_FILTER3_RESONANCE &&
              channel_filter_rows(3).gain == CTRL_CHAN_FILTER4_GAIN);
static_assert(global_filter_rows(0).cutoff == CTRL_GLOBAL_FILTER1_CUTOFF &&
              global_filter_rows(2).resonance == CTRL_GLOBAL_FILTER3_RESONANCE &&
              global_filter_rows(5).gain == CTRL_GLOBAL_FILTER6_GAIN);

inline constexpr unsigned NUM_EFFECT_PARAMETERS = 5;
inline constexpr unsigned NUM_MONO_EFFECTS = 2;

struct EffectRows {
    unsigned type;
    unsigned first_parameter; // NUM_EFFECT_PARAMETERS in a row

    [[nodiscard]] constexpr unsigned parameter(unsigned index) const {
        return first_parameter + index;
    }
};

constexpr EffectRows mono_effect_rows(unsigned index) {
    return index == 0 ? EffectRows{CTRL_CHANFX1_TYPE, CTRL_CHANFX1_PARAM1}
                      : EffectRows{CTRL_CHANFX1B_TYPE, CTRL_CHANFX1B_PARAM1};
}
inline constexpr EffectRows STEREO_EFFECT_ROWS = {CTRL_CHANFX2_TYPE, CTRL_CHANFX2_PARAM1};
static_assert(mono_effect_rows(0).parameter(4) == CTRL_CHANFX1_PARAM5 &&
              mono_effect_rows(1).parameter(4) == CTRL_CHANFX1B_PARAM5 &&
              STEREO_EFFECT_ROWS.parameter(4) == CTRL_CHANFX2_PARAM5);

struct CompressorBandRows {
    unsigned threshold;
    unsigned ratio;
    unsigned attack;
    unsigned release;
    unsigned makeup;
};

inline constexpr unsigned NUM_COMPRESSOR_BANDS = 4;

constexpr CompressorBandRows compressor_band_rows(unsigned band) {
    constexpr unsigned STRIDE = CTRL_FCMPR_BAND2_THRESHOLD - CTRL_FCMPR_BAND1_THRESHOLD;
    const unsigned shift = STRIDE * band;
    return {CTRL_FCMPR_BAND1_THRESHOLD + shift, CTRL_FCMPR_BAND1_RATIO + shift,
            CTRL_FCMPR_BAND1_ATTACK_TIME + shift, CTRL_FCMPR_BAND1_RELEASE_TIME + shift,
            CTRL_FCMPR_BAND1_MAKEUP_GAIN + shift};
}
static_assert(compressor_band_rows(3).threshold == CTRL_FCMPR_BAND4_THRESHOLD &&
              compressor_band_rows(2).release == CTRL_FCMPR_BAND3_RELEASE_TIME &&
              compressor_band_rows(1).makeup == CTRL_FCMPR_BAND2_MAKEUP_GAIN);

// Lowest first.
inline constexpr unsigned CROSSOVER_ROWS[NUM_COMPRESSOR_BANDS - 1] = {
    CTRL_FCMPR_BAND12_CROSSOVER_FREQ, CTRL_FCMPR_BAND23_CROSSOVER_FREQ,
    CTRL_FCMPR_BAND34_CROSSOVER_FREQ};

struct OscillatorRows {
    unsigned type;
    unsigned coarse_tune;
    unsigned fine_tune;
    unsigned spread;
    unsigned copies;
    unsigned random_phase; // that of oscillator 1 governs all
};

inline constexpr unsigned NUM_OSCILLATORS = 3;

constexpr OscillatorRows oscillator_rows(unsigned index) {
    return {CTRL_OSC1_TYPE + index,        CTRL_OSC1_COARSE_TUNE + index,
            CTRL_OSC1_FINE_TUNE + index,   CTRL_OSC1_SPREAD + index,
            CTRL_OSC1_MULTI_COUNT + index, CTRL_OSC1_RANDOMIZE_PHASE + index};
}
static_assert(oscillator_rows(2).type == CTRL_OSC3_TYPE &&
              oscillator_rows(2).coarse_tune == CTRL_OSC3_COARSE_TUNE &&
              oscillator_rows(2).fine_tune == CTRL_OSC3_FINE_TUNE &&
              oscillator_rows(2).spread == CTRL_OSC3_SPREAD &&
              oscillator_rows(2).copies == CTRL_OSC3_MULTI_COUNT &&
              oscillator_rows(2).random_phase == CTRL_OSC3_RANDOMIZE_PHASE);

struct EnvelopeRows {
    unsigned attack;
    unsigned decay;
    unsigned sustain;
    unsigned release;
};

inline constexpr unsigned NUM_ENVELOPES = 3; // the first is the amplitude

constexpr EnvelopeRows envelope_rows(unsigned index) {
    return {CTRL_ENV1_ATTACK + index, CTRL_ENV1_DECAY + index, CTRL_ENV1_SUSTAIN + index,
            CTRL_ENV1_RELEASE + index};
}
static_assert(envelope_rows(2).attack == CTRL_ENV3_ATTACK &&
              envelope_rows(2).decay == CTRL_ENV3_DECAY &&
              envelope_rows(2).sustain == CTRL_ENV3_SUSTAIN &&
              envelope_rows(2).release == CTRL_ENV3_RELEASE);

struct LfoRows {
    unsigned type;
    unsigned speed;
    unsigned phase;
};

inline constexpr unsigned NUM_LFOS = 2;

constexpr LfoRows lfo_rows(unsigned index) {
    return {CTRL_LFO1_TYPE + index, CTRL_LFO1_SPEED + index, CTRL_LFO1_PHASE + index};
}
static_assert(lfo_rows(1).type == CTRL_LFO2_TYPE && lfo_rows(1).speed == CTRL_LFO2_SPEED &&
              lfo_rows(1).phase == CTRL_LFO2_PHASE);

// A slot of modulation: a source (an Influence) moves the slot's target.
struct ModulationRows {
    unsigned source;
    unsigned amount;
    unsigned fine_amount;
};

inline constexpr unsigned NUM_MODULATION_SLOTS = 8;

constexpr ModulationRows modulation_rows(unsigned slot) {
    return {CTRL_OSC1_INFLUENCE_SOURCE + slot, CTRL_OSC1_INFLUENCE_AMOUNT + slot,
            CTRL_OSC1_INFLUENCE_FINE_AMOUNT + slot};
}
static_assert(modulation_rows(NUM_MODULATION_SLOTS - 1).source == CTRL_AMPLITUDE_INFLUENCE_SOURCE &&
              modulation_rows(7).amount == CTRL_AMPLITUDE_INFLUENCE_AMOUNT &&
              modulation_rows(7).fine_amount == CTRL_AMPLITUDE_INFLUENCE_FINE_AMOUNT);

constexpr bool is_modulation_amount(unsigned number) {
    return number - CTRL_OSC1_INFLUENCE_AMOUNT < NUM_MODULATION_SLOTS;
}

// Slots by their targets.
inline constexpr unsigned FIRST_PITCH_SLOT = 0; // one for each oscillator
inline constexpr unsigned RESONANCE_SLOT = 3;
inline constexpr unsigned FIRST_CUTOFF_SLOT = 4;
inline constexpr unsigned NUM_CUTOFF_SLOTS = 3;
inline constexpr unsigned AMPLITUDE_SLOT = 7;
static_assert(modulation_rows(RESONANCE_SLOT).source == CTRL_RESONANCE1_INFLUENCE_SOURCE &&
              modulation_rows(FIRST_CUTOFF_SLOT).source == CTRL_CUTOFF1_INFLUENCE1_SOURCE &&
              modulation_rows(AMPLITUDE_SLOT).source == CTRL_AMPLITUDE_INFLUENCE_SOURCE);

} // namespace tarquil
