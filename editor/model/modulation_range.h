// How far modulation moves a control, as bytes of its own scale.

#pragma once

#include <optional>

#include "softsynth/parameters/controller_bytes.h"
#include "softsynth/parameters/note_view.h"

namespace tarquil {

struct ModulationRange {
    double lowest = 0.0; // may lie beyond what the control can be set to
    double highest = 0.0;
    unsigned source = 0; // an Influence: of the first slot that moves it
};

// Of the cutoff, the resonance and the coarse tunes; nothing when they stand still.  As if all
// sources were at their extremes at once.
std::optional<ModulationRange> modulation_range(unsigned number, const ControllerBytes& bytes);

// Where the note's modulation has moved the cutoff or the resonance to; nothing for others.
std::optional<double> modulated_byte(unsigned number, const NoteView& note);

} // namespace tarquil
