// The computer's keyboard as a piano of one octave and a half.

#pragma once

#include <cstdint>
#include <set>

#include "editor/model/played_notes.h"

namespace tarquil {

// The rows of "a" and "w" are the white and the black keys from C on; "z" and "x" shift by octaves.
class ComputerKeys {
  public:
    // The notes stay as long as the object.
    explicit ComputerKeys(PlayedNotes& played) : notes(played) {}

    // `code` names the key itself, `character` is what it types without Shift.  The note goes to
    // `channel`.  False for a key that means nothing here.
    bool press(uint32_t code, uint32_t character, unsigned channel);
    // Of whatever was pressed, and of what was not.
    void release(uint32_t code);
    void release_all();

    // The codes that have been pressed here and not released.
    [[nodiscard]] const std::set<uint32_t>& get_down() const { return down; }

    // The character of the key that plays a note (0..127), 0 for none.
    [[nodiscard]] char character_of(int note) const;

  private:
    PlayedNotes& notes;
    int octave_start = 60; // a MIDI note
    std::set<uint32_t> down;
};

} // namespace tarquil
