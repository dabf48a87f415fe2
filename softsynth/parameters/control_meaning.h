// What a controller means while the others are as they are: the parameters of an effect depend on
// its type, and what is switched off has no effect.

#pragma once

#include <span>

#include "softsynth/parameters/controller_bytes.h"
#include "softsynth/parameters/unit.h"

namespace tarquil {

struct ControlMeaning {
    const char* label = "";                    // for a parameter that its effect's type names
    double (*quantity)(int byte) = nullptr;    // null: the controller's own
    Unit unit = Unit::NONE;                    // of the quantity
    std::span<const char* const> choices = {}; // the labels, when it picks one of a list
    bool is_used = true;                       // false: it changes nothing now
};

// `number` has a row.
ControlMeaning meaning_of(unsigned number, const ControllerBytes& bytes);

// The quantity that the engine uses, in the meaning's unit; of list choices the place in the list.
double quantity_of(unsigned number, int byte, const ControlMeaning& meaning);

} // namespace tarquil
