// What became of the messages that a dialect was given.

#pragma once

#include <array>
#include <cstdint>

namespace tarquil {

enum class Verdict : uint8_t {
    PLAYED,
    APPROXIMATED,
    IGNORED,
};

// Kinds of messages other than controllers: every message counts under one of these or under its
// controller.
enum class GmMessage : uint8_t {
    NOTES,
    DRUMS,
    DRUMS_WITHOUT_SOUND,
    NOTE_OFFS,
    KEY_PRESSURE,
    PROGRAMS,
    CHANNEL_PRESSURE,
    BENDS,
    RESETS,        // GM on and off, GM2, GS, XG
    MASTER_LEVELS, // volume, balance, tuning
    RHYTHM_PARTS,
    OTHER_SYSEX,
    OTHER_SYSTEM,
    DAMAGED,
};
inline constexpr unsigned NUM_GM_MESSAGES = 14;

// What could not be done as asked, besides.
enum class GmShortfall : uint8_t {
    BEND_CLAMPED,        // beyond an octave from the note
    NOTE_MOVED,          // beyond the engine's keys: by octaves
    PART_TAKEN,          // from sounding notes: more than sixteen sounds at once
    NOTE_RELEASED,       // held by a pedal, while voices are scarce
    DATA_WITHOUT_TARGET, // data entry with no parameter chosen, or one that is not known
    BANK_NOT_KNOWN,      // another bank than the first: its first sound instead
    RHYTHM_CONTROLLER,   // what a rhythm part has no use for
};
inline constexpr unsigned NUM_GM_SHORTFALLS = 7;

struct GmReport {
    uint64_t messages = 0;
    std::array<uint64_t, NUM_GM_MESSAGES> kinds{};
    std::array<uint64_t, 128> controllers{};
    std::array<uint64_t, NUM_GM_SHORTFALLS> shortfalls{};

    void count(GmMessage kind) { kinds[unsigned(kind)]++; }
    void count(GmShortfall shortfall) { shortfalls[unsigned(shortfall)]++; }
};

// For people: "pitch bends", "bends beyond an octave, clamped".
const char* gm_message_name(GmMessage kind);
const char* gm_shortfall_name(GmShortfall shortfall);
Verdict gm_message_verdict(GmMessage kind);
// "volume"; "" for numbers without a common name.
const char* midi_controller_name(unsigned controller);
Verdict midi_controller_verdict(unsigned controller);

} // namespace tarquil
