// The sounds to choose from.

#include "editor/model/sound_library.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "common/characters.h"
#include "common/platform/user_folder.h"
#include "instrument/checked_load.h"
#include "instrument/names.h"

namespace tarquil {

namespace {

namespace fs = std::filesystem;

std::string with_blanks(std::string text) {
    std::replace(text.begin(), text.end(), '_', ' ');
    return text;
}

LibrarySound sound_of(LibrarySound::Place place, const Instrument& instrument, std::string where) {
    const auto said = [&](InstrumentText which) { return std::string(instrument.get_text(which)); };
    LibrarySound sound;
    sound.place = place;
    sound.name = with_blanks(instrument.get_name());
    sound.category = said(InstrumentText::CATEGORY);
    sound.tags = said(InstrumentText::TAGS);
    sound.author = said(InstrumentText::AUTHOR);
    sound.where = std::move(where);
    sound.instrument = instrument;
    return sound;
}

// Without the slots that nobody has filled.
void add_bank(std::vector<LibrarySound>& sounds, LibrarySound::Place place,
              const TarqSettings& bank, const std::string& where, const std::string& id) {
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const Instrument& instrument = bank.get_instrument(i);
        if (instrument.get_name().empty() || instrument.get_name() == default_instrument_name(i))
            continue;
        LibrarySound sound = sound_of(place, instrument, where);
        sound.id = id + "#" + std::to_string(i);
        sounds.push_back(std::move(sound));
    }
}

void add_file(std::vector<LibrarySound>& sounds, const fs::path& path, const std::string& below) {
    if (path.extension() == ".tqb") {
        const auto bank = std::make_unique<TarqSettings>();
        set_default_names(*bank);
        if (load_bank_checked(*bank, path.string()) == 0)
            add_bank(sounds, LibrarySound::Place::FILES, *bank, below, path.string());
        return;
    }
    Instrument instrument;
    if (load_instrument_checked(instrument, path.string()) != 0)
        return;
    LibrarySound sound = sound_of(LibrarySound::Place::FILES, instrument, below);
    if (sound.name.empty())
        sound.name = path.stem().string();
    sound.id = path.string();
    sounds.push_back(std::move(sound));
}

} // namespace

std::string SoundLibrary::usual_folder() {
    const std::string base = user_folder("XDG_DATA_HOME", ".local/share");
    return base.empty() ? "" : base + "/tarquil/sounds";
}

void SoundLibrary::replace(LibrarySound::Place place, std::vector<LibrarySound> fresh) {
    std::erase_if(all, [place](const LibrarySound& sound) { return sound.place == place; });
    const auto behind = std::find_if(
        all.begin(), all.end(), [place](const LibrarySound& sound) { return sound.place > place; });
    all.insert(behind, std::make_move_iterator(fresh.begin()),
               std::make_move_iterator(fresh.end()));
}

void SoundLibrary::add_shipped(const std::vector<ShippedBank>& banks) {
    std::vector<LibrarySound> fresh;
    for (const ShippedBank& shipped : banks)
        add_bank(fresh, LibrarySound::Place::SHIPPED, *shipped.bank, shipped.title, shipped.title);
    replace(LibrarySound::Place::SHIPPED, std::move(fresh));
}

void SoundLibrary::read_folder(const std::string& folder) {
    std::vector<fs::path> paths;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied,
                                           error);
    for (; !folder.empty() && !error && entry != fs::recursive_directory_iterator() &&
           paths.size() < MAX_FILES;
         entry.increment(error)) {
        const fs::path& path = entry->path();
        if (entry.depth() >= MAX_DEPTH)
            entry.disable_recursion_pending();
        if (path.extension() == ".tqi" || path.extension() == ".tqb")
            paths.push_back(path);
    }
    std::sort(paths.begin(), paths.end());
    std::vector<LibrarySound> fresh;
    for (const fs::path& path : paths)
        add_file(fresh, path, path.lexically_relative(folder).string());
    replace(LibrarySound::Place::FILES, std::move(fresh));
}

void SoundLibrary::read_bank(EditorSynth& synth) {
    std::vector<LibrarySound> fresh;
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const Instrument instrument = synth.get_instrument(i);
        if (instrument.get_name() == default_instrument_name(i))
            continue;
        fresh.push_back(
            sound_of(LibrarySound::Place::BANK, instrument, "this bank, " + std::to_string(i)));
        fresh.back().program = i;
    }
    replace(LibrarySound::Place::BANK, std::move(fresh));
}

bool matches(const LibrarySound& sound, std::string_view search) {
    const std::string text =
        lower_case(sound.name + "\n" + sound.category + "\n" + sound.tags + "\n" + sound.author);
    const std::string wanted = lower_case(std::string(search));
    for (size_t start = 0; start < wanted.size();) {
        const size_t end = std::min(wanted.find(' ', start), wanted.size());
        if (text.find(wanted.substr(start, end - start)) == std::string::npos)
            return false;
        start = end + 1;
    }
    return true;
}

} // namespace tarquil
