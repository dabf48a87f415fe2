// A few notes to hear a sound by, and the text that they are written in.
//
//   at 104 bpm, sixteenths: E1! - E2 . | A2+C3+E3 - E1, -
//
// Note names (C4 is key 60, "b" and "#" behind the letter) of the length that stands before the
// colon (whole notes down to thirty-seconds); "+" joins a chord, "!" is a hard and "," a soft
// stroke, "." holds on, "-" rests, "|" is for the eye.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tarquil {

struct PhraseNote {
    uint32_t start_ms = 0;
    uint32_t length_ms = 0;
    uint8_t key = 60;
    uint8_t velocity = 90;

    bool operator==(const PhraseNote&) const = default;
};

// In the order in which they begin.
using Phrase = std::vector<PhraseNote>;

inline constexpr size_t MAX_PHRASE_NOTES = 256;

// Nothing for a text that is no phrase as a whole, or one without a note.
std::optional<Phrase> parse_phrase(std::string_view text);

// The one behind the word "Phrase:" in what is said about a sound, up to the end.
std::optional<Phrase> find_phrase(std::string_view comment);

} // namespace tarquil
