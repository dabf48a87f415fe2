// The units of quantities.

#pragma once

namespace tarquil {

enum class Unit {
    NONE,
    LEVEL, // a linear gain, shown in dB
    SECONDS,
    SAMPLES, // a time at the engine's rate, shown as one
    HERTZ,
    Q,
    RATIO, // of a compressor: n to 1
    SEMITONES,
    OCTAVES,
    CYCLES,
    COPIES,
    VOICES,
    BPM,
    BITS,
    HELD_SAMPLES, // a count
};

// What stands behind a number: "dB", "s", "octaves"; empty without a unit.
const char* unit_name(Unit unit);

} // namespace tarquil
