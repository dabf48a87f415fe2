// The waveforms of oscillators and LFOs.

#pragma once

namespace tarquil {

enum OscType : int {
    OSC_NONE = 0,
    OSC_SINE = 1,
    OSC_SAW = 2,
    OSC_SQUARE = 3,
    OSC_TRIANGLE = 4,
    OSC_NOISE = 5,
};

} // namespace tarquil
