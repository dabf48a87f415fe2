// Which meaning MIDI messages have for a bank.

#pragma once

namespace tarquil {

enum class MidiDialect {
    NATIVE,       // the engine's own controller numbers
    GENERAL_MIDI, // those of General MIDI
};

} // namespace tarquil
