// What has no effect now: parts of what is switched off, and what no other setting makes use of.

#pragma once

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

// False when changing the controller alone changes no bit of the sound.  What switches a thing on
// or off always counts as used.
bool is_controller_used(unsigned number, const ControllerBytes& bytes);

// True when a slot of modulation has `source`, an Influence.
bool is_modulation_source(unsigned source, const ControllerBytes& bytes);

} // namespace tarquil
