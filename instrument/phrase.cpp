// A few notes to hear a sound by.

#include "instrument/phrase.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace tarquil {

namespace {

constexpr uint8_t SOFT = 55;
constexpr uint8_t MEDIUM = 90;
constexpr uint8_t HARD = 118;

constexpr uint32_t WHOLE_AT_1_BPM_MS = 240'000;

// Cuts off and returns what comes before the blank, or all.
std::string_view cut_word(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size());
    return word;
}

bool cut_start(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start))
        return false;
    text.remove_prefix(start.size());
    return true;
}

bool cut_number(std::string_view& text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(size_t(end - text.data()));
    return error == std::errc();
}

std::optional<uint32_t> parts_of_whole(std::string_view name) {
    constexpr std::pair<std::string_view, uint32_t> LENGTHS[] = {
        {"wholes", 1},  {"halves", 2},      {"quarters", 4},
        {"eighths", 8}, {"sixteenths", 16}, {"thirty-seconds", 32}};
    for (const auto& [each, parts] : LENGTHS) {
        if (each == name)
            return parts;
    }
    return std::nullopt;
}

std::optional<uint8_t> cut_key(std::string_view& text) {
    constexpr std::string_view LETTERS = "C D EF G A B";
    const size_t semitone =
        text.empty() || text[0] == ' ' ? std::string_view::npos : LETTERS.find(text[0]);
    if (semitone == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(1);
    int key = int(semitone);
    if (cut_start(text, "b"))
        key--;
    else if (cut_start(text, "#"))
        key++;
    int octave = 0;
    if (!cut_number(text, octave) || octave < -1 || octave > 9)
        return std::nullopt;
    key += 12 * (octave + 1);
    return key >= 0 && key < 128 ? std::optional(uint8_t(key)) : std::nullopt;
}

// Adds what one word strikes; false when it is no note.
bool add_chord(std::string_view word, uint32_t start_ms, uint32_t length_ms, Phrase& phrase) {
    uint8_t velocity = MEDIUM;
    if (word.ends_with('!') || word.ends_with(',')) {
        velocity = word.back() == '!' ? HARD : SOFT;
        word.remove_suffix(1);
    }
    do {
        const std::optional<uint8_t> key = cut_key(word);
        if (!key || phrase.size() >= MAX_PHRASE_NOTES)
            return false;
        phrase.push_back({start_ms, length_ms, *key, velocity});
    } while (cut_start(word, "+"));
    return word.empty();
}

} // namespace

std::optional<Phrase> parse_phrase(std::string_view text) {
    if (cut_word(text) != "at")
        return std::nullopt;
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    int bpm = 0;
    if (!cut_number(text, bpm) || bpm < 20 || bpm > 400 || cut_word(text) != "bpm,")
        return std::nullopt;
    std::string_view length = cut_word(text);
    if (!length.ends_with(':'))
        return std::nullopt;
    length.remove_suffix(1);
    const std::optional<uint32_t> parts = parts_of_whole(length);
    if (!parts)
        return std::nullopt;
    const auto time_of = [&](uint32_t step) {
        return step * WHOLE_AT_1_BPM_MS / (uint32_t(bpm) * *parts);
    };
    Phrase phrase;
    uint32_t step = 0;
    size_t chord = 0;       // where the last one begins
    uint32_t struck_at = 0; // step
    for (std::string_view word = cut_word(text); !word.empty(); word = cut_word(text)) {
        if (word == "|")
            continue;
        if (word == ".") {
            for (size_t i = chord; i < phrase.size(); i++)
                phrase[i].length_ms = time_of(step + 1) - time_of(struck_at);
        } else if (word == "-") {
            chord = phrase.size();
        } else {
            chord = phrase.size();
            struck_at = step;
            if (!add_chord(word, time_of(step), time_of(step + 1) - time_of(step), phrase))
                return std::nullopt;
        }
        if (++step > MAX_PHRASE_NOTES)
            return std::nullopt;
    }
    return phrase.empty() ? std::nullopt : std::optional(std::move(phrase));
}

std::optional<Phrase> find_phrase(std::string_view comment) {
    constexpr std::string_view WORD = "Phrase: ";
    const size_t start = comment.rfind(WORD);
    return start == std::string_view::npos ? std::nullopt
                                           : parse_phrase(comment.substr(start + WORD.size()));
}

} // namespace tarquil
