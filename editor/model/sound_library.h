// The sounds to choose from: this bank's, those that come with the program, and the user's files.

#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "editor/model/editor_synth.h"

namespace tarquil {

struct LibrarySound {
    enum class Place { BANK, SHIPPED, FILES };

    Place place = Place::BANK;
    std::string name; // with blanks
    std::string category;
    std::string tags;
    std::string author;
    std::string where;    // for people: the bank, or the file below the user's folder
    std::string id;       // the same in every session; empty for this bank's
    unsigned program = 0; // of this bank
    Instrument instrument;
};

class SoundLibrary {
  public:
    // Of banks that come with the program.
    void add_shipped(const std::vector<ShippedBank>& banks);
    // Instruments and banks in the folder and those below it, instead of what was read before.
    void read_folder(const std::string& folder);
    void read_bank(EditorSynth& synth);

    // This bank's first, then in the order in which they were added.
    [[nodiscard]] const std::vector<LibrarySound>& sounds() const { return all; }

    // $XDG_DATA_HOME/tarquil/sounds, else ~/.local/share/tarquil/sounds; empty without either.
    static std::string usual_folder();

    // Beyond these a folder is no collection of sounds, but a disk.
    static constexpr size_t MAX_FILES = 2000;
    static constexpr int MAX_DEPTH = 4;

  private:
    void replace(LibrarySound::Place place, std::vector<LibrarySound> fresh);

    std::vector<LibrarySound> all;
};

// Whether each word of `search` is in the sound's name, category, tags or author, in any case.
bool matches(const LibrarySound& sound, std::string_view search);

} // namespace tarquil
