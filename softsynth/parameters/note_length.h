// Note lengths, and which controllers are read as such when they follow a tempo.

#pragma once

#include <span>
#include <string_view>

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

struct NoteLength {
    const char* name; // "1/8", dotted "1/8 D", a triplet's "1/8 T"
    double quarters;  // quarter notes
};

// From four bars, dotted, down to a triplet's thirty-second; the longest first.
std::span<const NoteLength> note_lengths();

// The one with this name, blanks left out and "." for the D as well; null for none.
const NoteLength* find_note_length(std::string_view text);

// The length that byte 0..127 of a controller stands for when it follows: the one nearest to its
// own time, or period, at 120 quarter notes a minute.  So it keeps its length at every tempo.  Null
// for a controller that never follows, and for an LFO that stands still.
const NoteLength* followed_length(unsigned number, int byte, const ControllerBytes& bytes);

} // namespace tarquil
