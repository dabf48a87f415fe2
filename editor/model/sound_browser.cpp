// What the browser of sounds shows.

#include "editor/model/sound_browser.h"

#include <algorithm>
#include <filesystem>

#include "editor/model/audition_phrase.h"

namespace tarquil {

namespace {

// A name of a file that is not there yet.
std::filesystem::path free_path(const std::filesystem::path& folder, std::string name) {
    std::replace(name.begin(), name.end(), '/', '_');
    std::filesystem::path path = folder / (name + ".tqi");
    std::error_code error;
    for (int number = 2; std::filesystem::exists(path, error); number++)
        path = folder / (name + "_" + std::to_string(number) + ".tqi");
    return path;
}

} // namespace

void SoundBrowser::follow(EditorModel& model) {
    const bool is_new = !is_read;
    if (is_new) {
        library.add_shipped(model.get_synth().shipped_banks());
        library.read_folder(folder);
        is_read = true;
    }
    if (!is_new && bank_names == model.get_state().names)
        return;
    library.read_bank(model.get_synth());
    bank_names = model.get_state().names;
    find();
}

void SoundBrowser::read_folder_again() {
    library.read_folder(folder);
    find();
}

void SoundBrowser::set_search(const std::string& text) {
    wanted = text;
    current = 0;
    find();
}

void SoundBrowser::set_filter(Filter new_filter) {
    kind = new_filter;
    current = 0;
    find();
}

void SoundBrowser::find() {
    rows.clear();
    for (size_t i = 0; i < library.sounds().size(); i++) {
        const LibrarySound& sound = library.sounds()[i];
        if (is_of_kind(sound) && matches(sound, wanted))
            rows.push_back(i);
    }
    if (kind == Filter::RECENT) {
        const std::vector<std::string>& ids = recent.get_ids();
        const auto age = [&](size_t row) {
            return std::find(ids.begin(), ids.end(), library.sounds()[row].id);
        };
        std::stable_sort(rows.begin(), rows.end(),
                         [&](size_t one, size_t other) { return age(one) < age(other); });
    }
    mark(current);
}

bool SoundBrowser::is_of_kind(const LibrarySound& sound) const {
    switch (kind) {
    case Filter::BANK:
        return sound.place == LibrarySound::Place::BANK;
    case Filter::SHIPPED:
        return sound.place == LibrarySound::Place::SHIPPED;
    case Filter::FILES:
        return sound.place == LibrarySound::Place::FILES;
    case Filter::FAVOURITES:
        return favourites.has(sound.id);
    case Filter::RECENT:
        return std::find(recent.get_ids().begin(), recent.get_ids().end(), sound.id) !=
               recent.get_ids().end();
    case Filter::ALL:
        break;
    }
    return true;
}

std::optional<size_t> SoundBrowser::marked() const {
    return rows.empty() ? std::nullopt : std::optional(current);
}

void SoundBrowser::mark(size_t index) {
    current = rows.empty() ? 0 : std::min(index, rows.size() - 1);
}

void SoundBrowser::step(int steps) {
    const auto last = ptrdiff_t(rows.size()) - 1;
    mark(
        size_t(std::clamp<ptrdiff_t>(ptrdiff_t(current) + steps, 0, std::max<ptrdiff_t>(last, 0))));
}

std::string SoundBrowser::toggle_favourite(size_t index) {
    std::string problem = favourites.toggle(row(index).id);
    if (kind == Filter::FAVOURITES)
        find();
    return problem;
}

void SoundBrowser::audition(EditorSynth& synth) {
    if (!marked())
        return;
    const LibrarySound& sound = row(*marked());
    // This bank's may have been edited since they were listed.
    const Instrument instrument = sound.place == LibrarySound::Place::BANK
                                      ? synth.get_instrument(sound.program)
                                      : sound.instrument;
    synth.audition(instrument, audition_phrase(instrument));
    is_auditioning = true;
}

void SoundBrowser::end_audition(EditorSynth& synth) {
    if (is_auditioning)
        synth.end_audition();
    is_auditioning = false;
}

std::string SoundBrowser::load(size_t index, EditorModel& model) {
    if (index >= rows.size())
        return "";
    end_audition(model.get_synth());
    const LibrarySound& sound = row(index);
    recent.note(sound.id);
    if (kind == Filter::RECENT)
        current = 0;
    if (sound.place == LibrarySound::Place::BANK) {
        model.choose_program(sound.program);
        return "Program " + std::to_string(sound.program) + ": " + sound.name;
    }
    const unsigned program = model.get_state().program;
    const std::string before = model.program_name();
    const std::string name = sound.name; // the bank's rows are read anew
    model.load_instrument(sound.instrument, program);
    find();
    return "Program " + std::to_string(program) + " is " + name + "; undo brings " + before +
           " back";
}

std::string SoundBrowser::give_to_channel(size_t index, unsigned channel, EditorModel& model) {
    end_audition(model.get_synth());
    const LibrarySound& sound = row(index);
    std::string problem = model.give_to_channel(
        sound.place == LibrarySound::Place::BANK ? model.get_synth().get_instrument(sound.program)
                                                 : sound.instrument,
        channel);
    if (problem.empty())
        recent.note(sound.id);
    return problem;
}

std::string SoundBrowser::keep_program(EditorModel& model, std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    path = free_path(folder, model.program_name()).string();
    std::string problem = model.export_instrument(path, model.get_state().program);
    if (problem.empty())
        read_folder_again();
    return problem;
}

} // namespace tarquil
