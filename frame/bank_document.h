// The file that keeps a player's bank, where no host does.

#pragma once

#include <string>
#include <string_view>

#include "editor/model/editor_document.h"
#include "editor/model/editor_model.h"
#include "player/player.h"

namespace tarquil {

class BankDocument : public EditorDocument {
  public:
    // `start_path` is the file that the player's bank came from, empty for none.  Both outlive it.
    BankDocument(Player& kept_player, EditorModel& edited_model, std::string start_path);

    [[nodiscard]] const std::string& path() const override { return file; }
    [[nodiscard]] bool is_changed() const override;
    std::string save(const std::string& new_path) override;
    std::string open(const std::string& new_path) override;

    // The window's: "*mine.tqb - Tarquil"; the star says that it is changed.
    [[nodiscard]] std::string title() const;

    // What a file of it holds.
    [[nodiscard]] std::string text() { return player.save_state(); }
    // Takes such a text, which was not saved to `its_path`.  Empty, or what is wrong with it.
    std::string restore(std::string_view text, const std::string& its_path);

  private:
    std::string load(std::string_view text, const std::string& its_path);

    Player& player;
    EditorModel& model;
    std::string file;
    std::optional<uint64_t> saved_revision; // none: what is edited was never saved
};

} // namespace tarquil
