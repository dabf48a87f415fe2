// The sources of the banks that come with the program.

#include "sounds/sound_sources.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <set>
#include <sstream>
#include <vector>

#include "common/failure.h"
#include "common/load_string.h"
#include "instrument/checked_load.h"
#include "instrument/keys.h"
#include "instrument/load_error.h"
#include "instrument/names.h"
#include "instrument/text_error.h"
#include "instrument/text_kind.h"
#include "instrument/text_lines.h"
#include "midi/gm/gm_map_file.h"
#include "player/gm_sounds_of.h"

namespace tarquil {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view SOUND_ENDING = ".tqi";
constexpr std::string_view AUTHOR = "Tarquil";
constexpr const char* MAP_HEAD = "title = General MIDI\n"
                                 "melodic_bank = gm.tqb\n"
                                 "drum_bank = gm-drums.tqb\n";
constexpr const char* ORIGINALS_MAP_HEAD = "title = Originals\n"
                                           "melodic_bank = originals.tqb\n"
                                           "drum_bank = gm-drums.tqb\n";

[[noreturn]] void fail(const fs::path& file, const std::string& reason) {
    throw BadInput(file.string() + ": " + reason);
}

std::string read_file(const fs::path& file) {
    std::string text;
    const int error = load_file_to_string(file.string(), text);
    if (error != 0)
        fail(file, explain_file_error(error));
    return text;
}

// Nothing when there is no such file.
std::string read_settings(const fs::path& file) {
    return fs::exists(file) ? read_file(file) : std::string();
}

// "012" of "012_marimba.tqi"; 128 and above for what is none.
unsigned number_at_start(std::string_view text) {
    unsigned number = MAX_INSTRUMENTS;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() && read.ptr - text.data() == 3 ? number : MAX_INSTRUMENTS;
}

void check_keys(const fs::path& file, std::string_view text) {
    constexpr std::string_view SAID[] = {"author", "category", "tags", "comment"};
    for (TextLines lines(text); lines.next();) {
        const TextPair line = parse_line(lines.line());
        if (line.kind == LineKind::PAIR && !is_key_of(TextKind::INSTRUMENT, line.key) &&
            std::find(std::begin(SAID), std::end(SAID), line.key) == std::end(SAID))
            fail(file, "\"" + std::string(line.key) + "\" is no key of an instrument");
    }
}

Instrument read_sound(const fs::path& file, unsigned number) {
    const std::string text = read_file(file);
    if (!is_text_of(TextKind::INSTRUMENT, text))
        fail(file, explain_wrong_kind(TextKind::INSTRUMENT, text));
    check_keys(file, text);
    Instrument sound = built_in_instrument(number);
    sound.set_name("");
    LoadReport report;
    const int error = sound.load_from_string(text, &report, MissingKeys::EXPECTED);
    if (error != 0)
        fail(file, explain_instrument_text(error, text));
    if (!report.warnings.empty())
        fail(file, report.warnings.front());
    Instrument clamped = sound;
    clamp_choices(clamped);
    if (clamped.get_bytes() != sound.get_bytes())
        fail(file, "a choice is beyond its list");
    if (sound.get_name().empty())
        fail(file, "the sound has no name");
    return sound;
}

class BankReader {
  public:
    BankReader(TarqSettings& target, fs::path bank_folder)
        : bank(target), folder(std::move(bank_folder)) {
        for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
            bank.get_instrument(i) = built_in_instrument(i);
    }

    void read_globals(const std::string& title) {
        const fs::path file = folder / "globals.txt";
        const std::string text = read_settings(file);
        const int error = bank.load_globals_from_string(text);
        if (error != 0)
            fail(file, explain_bank_text(error, text));
        bank.set_song_title(title);
        bank.set_song_author(AUTHOR);
    }

    void put(unsigned number, const fs::path& file) {
        if (number >= MAX_INSTRUMENTS)
            fail(file, "no number from 000 to 127 stands in front");
        if (!taken.insert(number).second)
            fail(file, "its number is there twice");
        bank.get_instrument(number) = read_sound(file, number);
    }

    void read_numbered_files() {
        if (!fs::exists(folder))
            return;
        std::vector<fs::path> files;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
            if (entry.path().extension() == SOUND_ENDING)
                files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        for (const fs::path& file : files)
            put(number_at_start(file.filename().string()), file);
    }

    void read_order() {
        std::istringstream lines(read_settings(folder / "order.txt"));
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line.substr(0, line.find('#')));
            std::string number;
            std::string file;
            if (words >> number >> file)
                put(number_at_start(number), folder / file);
            else if (!number.empty())
                fail(folder / "order.txt", "\"" + line + "\" names no file");
        }
    }

    [[nodiscard]] bool has(unsigned number) const { return taken.count(number) != 0; }

  private:
    TarqSettings& bank;
    fs::path folder;
    std::set<unsigned> taken;
};

void check_map(const fs::path& file, const std::string& text, GmMap& map) {
    const std::string error = load_gm_map_from_string(map, text);
    if (!error.empty())
        fail(file, "the map of laws and kits: " + error);
}

void read_maps(const fs::path& folder, SoundSources& sources) {
    const std::string kits = read_settings(folder / "drums" / "kits.txt");
    const fs::path laws = folder / "gm" / "laws.txt";
    const fs::path originals_laws = folder / "originals" / "laws.txt";
    sources.map_text = MAP_HEAD + read_settings(laws) + kits;
    sources.originals_map_text = ORIGINALS_MAP_HEAD + read_settings(originals_laws) + kits;
    check_map(laws, sources.map_text, sources.map);
    GmMap originals;
    check_map(originals_laws, sources.originals_map_text, originals);
    const std::string conflict =
        find_family_conflict(sources.map, sounds_of(sources.gm, &sources.drums));
    if (!conflict.empty())
        fail(folder / "drums", conflict);
}

void check_kits(const fs::path& folder, const GmMap& map, const BankReader& drums) {
    for (unsigned program = 0; program < GM_PROGRAMS; program++) {
        const DrumKit* kit = map.kit(program);
        for (unsigned key = 0; kit != nullptr && key < NUM_KEYS; key++)
            if ((*kit)[key] && !drums.has((*kit)[key]->instrument))
                fail(folder / "drums" / "kits.txt",
                     "kit " + std::to_string(program) + ", key " + std::to_string(key) +
                         ": there is no drum " + std::to_string((*kit)[key]->instrument));
    }
}

} // namespace

SoundSources read_sound_sources(const std::string& path) {
    const fs::path folder(path);
    SoundSources sources;
    BankReader gm(sources.gm, folder / "gm");
    gm.read_globals("General MIDI");
    sources.gm.set_midi_dialect(MidiDialect::GENERAL_MIDI);
    gm.read_numbered_files();
    BankReader drums(sources.drums, folder / "drums");
    drums.read_globals("General MIDI drums");
    drums.read_numbered_files();
    BankReader originals(sources.originals, folder / "originals");
    originals.read_globals("Originals");
    originals.read_order();
    read_maps(folder, sources);
    check_kits(folder, sources.map, drums);
    return sources;
}

} // namespace tarquil
