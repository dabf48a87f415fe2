// What a sound is tried with in the browser.

#include "editor/model/audition_phrase.h"

#include "common/assertion.h"
#include "common/characters.h"

namespace tarquil {

namespace {

// The first row whose word the category begins with.
struct CategoryPhrase {
    std::string_view category;
    std::string_view phrase;
};
constexpr CategoryPhrase PHRASES[] = {
    {"drum", "at 110 bpm, eighths: C4! - C4, - C4! C4, C4 -"},
    {"percuss", "at 110 bpm, eighths: C4! - G4, - C5! G4, C4 -"},
    {"bass", "at 100 bpm, eighths: E1! - E1 G1, A1! . E2 -"},
    {"lead", "at 110 bpm, eighths: A4! . C5 E5, D5! . . -"},
    {"pad", "at 72 bpm, eighths: A3+C4+E4 . . . F3+A3+C4! . . ."},
    {"texture", "at 60 bpm, quarters: A3+E4! . . ."},
    {"voice", "at 72 bpm, eighths: E4 . G4 . A4+C5! . . ."},
    {"string", "at 80 bpm, eighths: D4! . A4, . F4+A4 . . -"},
    {"ensemble", "at 76 bpm, eighths: D3+A3+F4 . . . C3+G3+E4! . . ."},
    {"brass", "at 104 bpm, eighths: F3! - A3, C4 F4! . . -"},
    {"reed", "at 100 bpm, eighths: D4 F4, A4! . G4 . D4 -"},
    {"pipe", "at 100 bpm, eighths: D5 F5, A5! . G5 . D5 -"},
    {"organ", "at 90 bpm, eighths: C4+E4+G4! . F4+A4+C5 . C4+E4+G4 . . -"},
    {"piano", "at 100 bpm, eighths: C3 G3, C4! E4 G4, C5! . -"},
    {"key", "at 96 bpm, eighths: C4+E4+G4! - E4, G4 F4+A4+C5! . . -"},
    {"guitar", "at 100 bpm, eighths: E3! B3, E4 G#4, B4! . E4 -"},
    {"pluck", "at 110 bpm, eighths: A3! C4, E4 A4 C5! E4, A3 -"},
    {"ethnic", "at 104 bpm, eighths: D4! Eb4, Gb4 G4 A4! . D4 -"},
    {"chromatic", "at 110 bpm, eighths: C5! G5, E5 C6 G5! . C5 -"},
    {"bell", "at 80 bpm, eighths: C5! . G5, . E5 . . -"},
    {"rhythm", "at 120 bpm, eighths: A2+E3! . . . . . . ."},
    {"effect", "at 60 bpm, quarters: C4! . . -"},
    {"sound effect", "at 60 bpm, quarters: C4! . . -"},
    {"", "at 100 bpm, eighths: C4! E4, G4 C5 G4 . C4 -"}};

} // namespace

Phrase audition_phrase(const Instrument& sound) {
    std::optional<Phrase> phrase = find_phrase(sound.get_text(InstrumentText::COMMENT));
    const std::string category = lower_case(std::string(sound.get_text(InstrumentText::CATEGORY)));
    for (const CategoryPhrase& each : PHRASES) {
        if (!phrase && category.starts_with(each.category))
            phrase = parse_phrase(each.phrase);
    }
    TARQ_ASSERT(phrase.has_value());
    return *phrase;
}

} // namespace tarquil
