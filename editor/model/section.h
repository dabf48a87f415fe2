// Parts of a sound that are changed as a whole: put back to the defaults, or varied by chance.

#pragma once

#include <random>
#include <span>
#include <string>

#include "editor/model/editor_model.h"

namespace tarquil {

// Each is one step to undo and one gesture of the host; `controllers` have rows.

void initialise_section(EditorModel& model, const std::string& name,
                        std::span<const unsigned> controllers);

// Moves each value by up to `amount` (0..1) of its range; lists are drawn anew with that
// probability.  What ends the sound (levels, and oscillators that are switched off) stays.
void randomise_section(EditorModel& model, const std::string& name,
                       std::span<const unsigned> controllers, double amount,
                       std::minstd_rand& chance);

} // namespace tarquil
