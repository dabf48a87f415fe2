// What a controller is for, in a sentence for people.

#pragma once

#include <string>

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

// "The frequency where the filter begins to act, from 20.0 Hz to 20.5 kHz"; without the range where
// it picks one of a list.
std::string control_help(unsigned number, const ControllerBytes& bytes);

// "20.0 Hz to 20.5 kHz"; of a list its first choices.
std::string control_range(unsigned number, const ControllerBytes& bytes);

// "the filter is off"; empty where it has an effect.
std::string why_without_effect(unsigned number, const ControllerBytes& bytes);

// Notes that sound when it is changed keep the value that they began with.
bool acts_from_next_note(unsigned number);

} // namespace tarquil
