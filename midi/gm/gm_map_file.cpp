// Reading of map files.

#include "midi/gm/gm_map_file.h"

#include <algorithm>
#include <set>
#include <utility>

#include "common/load_string.h"
#include "instrument/text_error.h"
#include "instrument/text_file_reader.h"
#include "midi/gm/map_words.h"

namespace tarquil {

namespace {

bool is_digits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

class MapReader {
  public:
    explicit MapReader(GmMap& target) : map(target) {}

    // Empty, or what is wrong.
    std::string read_line(const std::string& key, std::string_view value);
    [[nodiscard]] bool has_keys() const { return !keys.empty(); }

  private:
    static void read_rule(SoundRules& rules, const std::string& key, MapWords& words);
    static void read_velocity(SoundRules& rules, unsigned program, MapWords& words);
    static void read_level(SoundRules& rules, unsigned program, MapWords& words);
    static void read_vibrato(SoundRules& rules, unsigned program, MapWords& words);
    static void read_law(SoundRules& rules, unsigned program, const std::string& controller,
                         MapWords& words);
    static void read_chokes(DrumKey& drum, std::string_view list, MapWords& words);
    void read_families(MapWords& words);
    void read_drum(const std::string& key, MapWords& words);

    GmMap& map;
    std::set<std::string, std::less<>> keys;
};

std::string MapReader::read_line(const std::string& key, std::string_view value) {
    const std::string_view view = key;
    const bool is_rule = view.size() > 5 && (view[0] == 'p' || view[0] == 'd') &&
                         is_digits(view.substr(1, 3)) && view[4] == '_';
    const bool is_drum = view.size() == 7 && view[0] == 'k' && view[3] == '_' &&
                         is_digits(view.substr(1, 2)) && is_digits(view.substr(4));
    MapWords words(value);
    if (!keys.insert(key).second)
        words.fail("is there twice");
    else if (key == "title")
        map.title = value;
    else if (key == "melodic_bank")
        map.melodic_bank = value;
    else if (key == "drum_bank")
        map.drum_bank = value;
    else if (key == "family")
        read_families(words);
    else if (is_rule)
        read_rule(view[0] == 'p' ? map.programs : map.drums, key, words);
    else if (is_drum)
        read_drum(key, words);
    else
        words.fail("is not a key of a map");
    return words.error();
}

void MapReader::read_rule(SoundRules& rules, const std::string& key, MapWords& words) {
    const unsigned program =
        words.whole(std::string_view(key).substr(1, 3), "the program", 0, GM_PROGRAMS - 1);
    const std::string what = key.substr(5);
    if (what == "velocity")
        read_velocity(rules, program, words);
    else if (what == "level" && key[0] == 'p')
        read_level(rules, program, words);
    else if (what == "vibrato" && key[0] == 'p')
        read_vibrato(rules, program, words);
    else
        read_law(rules, program, what, words);
}

void MapReader::read_velocity(SoundRules& rules, unsigned program, MapWords& words) {
    const std::string_view law = words.take("the law");
    if (law != "square" && law != "linear")
        words.fail(quoted(law) + " is neither square nor linear");
    words.expect_end();
    rules.velocity[program] = law == "square" ? VelocityLaw::SQUARE : VelocityLaw::LINEAR;
}

void MapReader::read_level(SoundRules& rules, unsigned program, MapWords& words) {
    constexpr double MAX_SLOPE = 24.0; // dB
    LevelLaw law;
    do {
        const std::string_view word = words.take("at, below, above or vel");
        if (word == "at")
            law.at = uint8_t(words.take_whole("the key", 0, NUM_KEYS - 1));
        else if (word == "below")
            law.below = float(words.take_number("the slope", -MAX_SLOPE, 0.0));
        else if (word == "above")
            law.above = float(words.take_number("the slope", -MAX_SLOPE, 0.0));
        else if (word == "vel")
            law.per_velocity = float(words.take_number("the slope", -MAX_SLOPE, MAX_SLOPE));
        else
            words.fail(quoted(word) + " is none of at, below, above and vel");
    } while (words.ok() && !words.at_end());
    rules.level[program] = law;
}

void MapReader::read_vibrato(SoundRules& rules, unsigned program, MapWords& words) {
    constexpr double MIN_HZ = 0.1;
    constexpr double MAX_HZ = 20.0;
    constexpr double MAX_CENTS = 1200.0;
    constexpr double MAX_SECONDS = 10.0;
    OwnVibrato vibrato;
    vibrato.hz = float(words.take_number("the rate", MIN_HZ, MAX_HZ));
    vibrato.cents = float(words.take_number("the depth", 0.0, MAX_CENTS));
    vibrato.delay_seconds = float(words.take_number("the delay", 0.0, MAX_SECONDS));
    vibrato.rise_seconds = float(words.take_number("the rise", 0.0, MAX_SECONDS));
    words.expect_end();
    rules.vibrato[program] = vibrato;
}

void MapReader::read_law(SoundRules& rules, unsigned program, const std::string& controller,
                         MapWords& words) {
    constexpr double MAX_BYTES = 127.0;
    const auto rows = channel_controller_rows();
    const auto* const row =
        std::find_if(&rows.front(), &rows.back() + 1,
                     [&](const ControllerInfo& info) { return controller == info.key; });
    if (row == &rows.back() + 1) {
        words.fail(quoted(controller) + " is not a controller of a sound");
        return;
    }
    if (!is_note_controller(row->number)) {
        words.fail("all notes of a channel share " + controller +
                   ": a law of a note can not change it");
        return;
    }
    NoteLaw law{.program = uint8_t(program), .controller = uint8_t(row->number)};
    do {
        const std::string_view word = words.take("key or vel");
        const auto slope = float(words.take_number("the slope", -MAX_BYTES, MAX_BYTES));
        if (word == "key")
            law.per_octave = slope;
        else if (word == "vel")
            law.per_velocity = slope;
        else
            words.fail(quoted(word) + " is neither key nor vel");
    } while (words.ok() && !words.at_end());
    rules.add(law);
}

void MapReader::read_families(MapWords& words) {
    while (words.ok() && !words.at_end()) {
        const std::string name(words.take("a name"));
        if (map.families.size() == MAX_FAMILIES)
            words.fail("more than 16 families");
        if (std::find(map.families.begin(), map.families.end(), name) != map.families.end())
            words.fail("the family " + quoted(name) + " is there twice");
        map.families.push_back(name);
    }
}

void MapReader::read_drum(const std::string& key, MapWords& words) {
    constexpr unsigned MAX_PERCENT = 200;
    constexpr unsigned MAX_MILLISECONDS = 30000;
    const std::string_view view = key;
    const unsigned kit = words.whole(view.substr(1, 2), "the kit", 0, GM_PROGRAMS - 1);
    const unsigned drum_key = words.whole(view.substr(4), "the key", 0, NUM_KEYS - 1);
    const std::string_view name = words.take("the family");
    const auto family = std::find(map.families.begin(), map.families.end(), name);
    if (family == map.families.end())
        words.fail("unknown family " + quoted(name) + "; name it before, in family = ...");
    DrumKey drum;
    drum.family = uint8_t(family - map.families.begin());
    drum.instrument = uint8_t(words.take_whole("the instrument", 0, GM_PROGRAMS - 1));
    drum.note = uint8_t(words.take_whole("the note", 0, NUM_KEYS - 1));
    drum.velocity_percent = uint8_t(words.take_whole("the velocity", 1, MAX_PERCENT));
    drum.pan = uint8_t(words.take_whole("the pan", 0, 127));
    const std::string_view length = words.take("the length");
    if (length != "held")
        drum.milliseconds = uint16_t(words.whole(length, "the length", 1, MAX_MILLISECONDS));
    if (!words.at_end())
        read_chokes(drum, words.take("the keys"), words);
    words.expect_end();
    if (words.ok())
        map.make_kit(kit)[drum_key] = drum;
}

void MapReader::read_chokes(DrumKey& drum, std::string_view list, MapWords& words) {
    while (!list.empty()) {
        const size_t length = std::min(list.find(','), list.size());
        if (drum.num_chokes == MAX_CHOKES) {
            words.fail("it ends more than 8 keys");
            return;
        }
        drum.chokes[drum.num_chokes++] =
            uint8_t(words.whole(list.substr(0, length), "the ended key", 0, NUM_KEYS - 1));
        list.remove_prefix(std::min(length + 1, list.size()));
    }
}

std::string_view without_trailing_blanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

} // namespace

std::string load_gm_map_from_string(GmMap& map, std::string_view text) {
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    if (text.starts_with(BYTE_ORDER_MARK))
        text.remove_prefix(BYTE_ORDER_MARK.size());
    std::string broken = explain_broken_line(text);
    if (!broken.empty())
        return broken;
    GmMap fresh;
    MapReader reader(fresh);
    unsigned line_number = 1;
    for (size_t start = 0; start < text.size(); line_number++) {
        const size_t end = std::min(text.find('\n', start), text.size());
        TextFileReader line;
        line.load_from_string(text.substr(start, end - start));
        for (const auto& [key, value] : line.get_pairs()) {
            const std::string error = reader.read_line(key, without_trailing_blanks(value));
            if (!error.empty()) {
                std::string place = "line " + std::to_string(line_number);
                return place.append(": ").append(key).append(": ").append(error);
            }
        }
        start = end + 1;
    }
    if (!reader.has_keys())
        return "there is no key of a map in it";
    fresh.programs.sort();
    fresh.drums.sort();
    map = std::move(fresh);
    return "";
}

std::string load_gm_map(GmMap& map, const std::string& path) {
    std::string text;
    const int code = load_file_to_string(path, text);
    const std::string error =
        code != 0 ? explain_file_error(code) : load_gm_map_from_string(map, text);
    return error.empty() ? "" : path + ": " + error;
}

} // namespace tarquil
