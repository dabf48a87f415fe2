// What the browser of sounds shows: the library through a search and a filter, and what is marked.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "editor/model/editor_model.h"
#include "editor/model/favourites.h"
#include "editor/model/recent_sounds.h"
#include "editor/model/sound_library.h"

namespace tarquil {

class SoundBrowser {
  public:
    enum class Filter { ALL, BANK, SHIPPED, FILES, FAVOURITES, RECENT };

    // `user_folder` as SoundLibrary has it; the paths are those of small files that it keeps.
    SoundBrowser(std::string user_folder, std::string favourites_path, std::string recent_path)
        : folder(std::move(user_folder)), favourites(std::move(favourites_path)),
          recent(std::move(recent_path)) {}

    // Reads what is not read yet, and this bank anew when its names have changed.
    void follow(EditorModel& model);
    void read_folder_again();
    [[nodiscard]] const std::string& user_folder() const { return folder; }

    [[nodiscard]] const std::string& search() const { return wanted; }
    void set_search(const std::string& text);
    [[nodiscard]] Filter filter() const { return kind; }
    void set_filter(Filter new_filter);

    [[nodiscard]] size_t num_rows() const { return rows.size(); }
    [[nodiscard]] const LibrarySound& row(size_t index) const {
        return library.sounds()[rows[index]];
    }

    // Nothing while there is no row.
    [[nodiscard]] std::optional<size_t> marked() const;
    void mark(size_t index);
    // Rows on, or back, as far as there are some.
    void step(int steps);

    [[nodiscard]] bool is_favourite(size_t index) const { return favourites.has(row(index).id); }
    // Empty, or why it could not be kept.
    std::string toggle_favourite(size_t index);

    // Plays the marked sound aside with a phrase that fits it, until it has ended or is told to.
    void audition(EditorSynth& synth);
    void end_audition(EditorSynth& synth);

    // Gives the sound to the edited program, in one step of undo; of this bank's, that program is
    // chosen instead.  What was done, for people; empty without a row.
    std::string load(size_t index, EditorModel& model);
    // Gives it to a channel by itself; of this bank's, the channel plays that program.
    // Empty, or why not.
    std::string give_to_channel(size_t index, unsigned channel, EditorModel& model);
    // Writes the edited program into the user's folder, beside what is there.  Empty, or why not.
    std::string keep_program(EditorModel& model, std::string& path);

  private:
    void find();
    [[nodiscard]] bool is_of_kind(const LibrarySound& sound) const;

    const std::string folder;
    SoundLibrary library;
    Favourites favourites;
    RecentSounds recent;
    bool is_auditioning = false;
    bool is_read = false;
    std::array<std::string, MAX_INSTRUMENTS> bank_names;
    std::string wanted;
    Filter kind = Filter::ALL;
    std::vector<size_t> rows; // of the library
    size_t current = 0;
};

} // namespace tarquil
