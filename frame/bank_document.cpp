// The file that keeps a player's bank.

#include "frame/bank_document.h"

#include <filesystem>
#include <memory>

#include "common/load_string.h"
#include "common/platform/whole_file.h"
#include "instrument/checked_load.h"
#include "instrument/load_error.h"
#include "player/channel_programs.h"

namespace tarquil {

BankDocument::BankDocument(Player& kept_player, EditorModel& edited_model, std::string start_path)
    : player(kept_player), model(edited_model), file(std::move(start_path)),
      saved_revision(model.revision()) {}

bool BankDocument::is_changed() const {
    const std::optional<uint64_t> now = model.revision();
    return !now || now != saved_revision;
}

std::string BankDocument::title() const {
    const std::string name =
        file.empty() ? "Untitled" : std::filesystem::path(file).filename().string();
    return (is_changed() ? "*" : "") + name + " - Tarquil";
}

std::string BankDocument::save(const std::string& new_path) {
    model.end_gesture();
    std::string problem = write_whole_file(new_path, text());
    if (problem.empty()) {
        file = new_path;
        saved_revision = model.revision();
    }
    return problem;
}

std::string BankDocument::open(const std::string& new_path) {
    std::string text;
    const int error = load_file_to_string(new_path, text);
    if (error != 0)
        return explain_bank_error(new_path, error);
    std::string problem = load(text, new_path);
    if (problem.empty()) {
        file = new_path;
        saved_revision = model.revision();
    }
    return problem;
}

std::string BankDocument::restore(std::string_view text, const std::string& its_path) {
    std::string problem = load(text, its_path);
    if (problem.empty()) {
        file = its_path;
        saved_revision.reset();
    }
    return problem;
}

std::string BankDocument::load(std::string_view text, const std::string& its_path) {
    const auto bank = std::make_unique<TarqSettings>(player.get_bank());
    const int error = load_bank_checked_from_string(*bank, text);
    if (error != 0)
        return its_path + ": " + explain_bank_text(error, text);
    model.begin_anew(*bank, find_channel_programs(text, bank->get_midi_dialect()));
    return "";
}

} // namespace tarquil
