// Notes that are played in the window.

#include "editor/model/played_notes.h"

#include <algorithm>

namespace tarquil {

void PlayedNotes::strike(uint32_t finger, unsigned channel, unsigned key, unsigned velocity) {
    lift(finger);
    // A key that another finger holds is struck again as on a piano: it comes up first.
    if (is_held(channel, key))
        synth.play_key(channel, key, 0);
    synth.play_key(channel, key, velocity);
    notes.push_back({finger, channel, key});
}

void PlayedNotes::lift(uint32_t finger) {
    const auto found = std::find_if(notes.begin(), notes.end(),
                                    [&](const Note& note) { return note.finger == finger; });
    if (found == notes.end())
        return;
    const Note note = *found;
    notes.erase(found);
    if (!is_held(note.channel, note.key))
        synth.play_key(note.channel, note.key, 0);
}

void PlayedNotes::lift_all() {
    while (!notes.empty())
        lift(notes.back().finger);
}

bool PlayedNotes::is_held(unsigned channel, unsigned key) const {
    return std::any_of(notes.begin(), notes.end(), [&](const Note& note) {
        return note.channel == channel && note.key == key;
    });
}

bool PlayedNotes::is_under_pointer(unsigned channel, unsigned key) const {
    return std::any_of(notes.begin(), notes.end(), [&](const Note& note) {
        return note.finger == POINTER && note.channel == channel && note.key == key;
    });
}

} // namespace tarquil
