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

} // namespace tarquil
