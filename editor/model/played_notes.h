// Notes that are played in the window.  Each finger remembers what it struck, so that this is what
// ends when it is lifted, whatever has been chosen meanwhile.

#pragma once

#include <cstdint>
#include <vector>

#include "editor/model/editor_synth.h"

namespace tarquil {

class PlayedNotes {
  public:
    // The pointer, among the fingers; all others are codes of the computer's keys.
    static constexpr uint32_t POINTER = UINT32_MAX;

    // The synthesizer stays as long as the object.
    explicit PlayedNotes(EditorSynth& played) : synth(played) {}
    PlayedNotes(const PlayedNotes&) = delete;
    PlayedNotes& operator=(const PlayedNotes&) = delete;
    ~PlayedNotes() { lift_all(); }

    // Channel 0..15, key 0..127, velocity 1..127.  What the finger held before ends.
    void strike(uint32_t finger, unsigned channel, unsigned key, unsigned velocity);
    void lift(uint32_t finger);
    void lift_all();

    // The pointer holds this key of the channel.
    [[nodiscard]] bool is_under_pointer(unsigned channel, unsigned key) const;

  private:
    struct Note {
        uint32_t finger = 0;
        unsigned channel = 0;
        unsigned key = 0;
    };

    [[nodiscard]] bool is_held(unsigned channel, unsigned key) const;

    EditorSynth& synth;
    std::vector<Note> notes;
};

} // namespace tarquil
