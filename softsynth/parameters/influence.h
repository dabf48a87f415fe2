// Sources of modulation within a voice.

#pragma once

namespace tarquil {

// Also the index of the voice's scratch buffer that holds the source's signal.
enum Influence : unsigned {
    INFL_NONE = 0,
    INFL_ENV1,
    INFL_ENV2,
    INFL_ENV3,
    INFL_LFO1,
    INFL_LFO2,
    INFL_OSC1,
    INFL_OSC2,
    INFL_OSC3,
    INFL_RESONANCE,
    INFL_END_MARKER,
};

// As people read them, by Influence.
inline constexpr const char* INFLUENCE_NAMES[INFL_END_MARKER] = {
    "None",  "Envelope 1",   "Envelope 2",   "Envelope 3",   "LFO 1",
    "LFO 2", "Oscillator 1", "Oscillator 2", "Oscillator 3", "Resonance"};

// What the eight slots move, in the order of their controllers.
inline constexpr const char* MODULATION_TARGET_NAMES[] = {
    "Oscillator 1 pitch", "Oscillator 2 pitch", "Oscillator 3 pitch", "Resonance",
    "Cutoff 1",           "Cutoff 2",           "Cutoff 3",           "Amplitude"};

// The amount byte at which a slot multiplies by its source instead of adding to its target.
inline constexpr int MULTIPLYING_AMOUNT = 127;

// What a new connection moves by when its amount is none: a quarter of the most.
inline constexpr int FIRST_AMOUNT = 80;

} // namespace tarquil
