// What is played by hand in the window, and what its keyboard shows.

#pragma once

#include <optional>

#include "editor/model/computer_keys.h"
#include "editor/model/editor_model.h"
#include "editor/model/played_notes.h"

namespace tarquil {

class Hands {
  public:
    // The model stays as long as the object.
    Hands(EditorModel& edited, bool with_computer_keys);
    // What the hands held down or had bent is let go.
    ~Hands();
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    // That keys and wheels are played on now: the selected one.
    [[nodiscard]] unsigned channel() const;
    // General MIDI has a modulation wheel and a sustain pedal, the native dialect has neither.
    [[nodiscard]] bool has_modulation_and_sustain() const;

    // The pointer strikes a key, perhaps from another one.
    void strike(unsigned key, unsigned velocity);
    void lift() { notes.lift(PlayedNotes::POINTER); }
    [[nodiscard]] bool is_under_pointer(unsigned key) const {
        return notes.is_under_pointer(channel(), key);
    }

    // A bend (0..EditorKeys::MAX_BEND) stays on its channel until it springs back.
    void bend(unsigned value);
    void let_bend_go();
    void set_modulation(unsigned value);
    void set_sustain(bool is_down);

    ComputerKeys& computer_keys() { return computer; }
    [[nodiscard]] bool plays_computer_keys() const { return with_computer; }
    void set_plays_computer_keys(bool plays);
    // Of the key that plays this one (0..127), 0 for none.
    [[nodiscard]] char computer_character(int key) const {
        return with_computer ? computer.character_of(key) : char(0);
    }

    // Reads what sounds.  True when that has changed.
    bool update();
    [[nodiscard]] const EditorKeys& shown() const { return keys; }
    [[nodiscard]] const EditorKeys::Channel& shown_channel() const {
        return keys.channels[channel()];
    }

  private:
    EditorModel& model;
    PlayedNotes notes;
    ComputerKeys computer;
    bool with_computer;
    EditorKeys keys;
    std::optional<unsigned> bent_channel;
    unsigned sustained_channels = 0; // by bits: here, not by others
};

} // namespace tarquil
