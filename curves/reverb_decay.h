// How long the reverb rings at a frequency, from the engine's own settings.

#pragma once

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

// Seconds until a tone of that frequency has died down by 60 dB.
double reverb_decay_seconds(const ControllerBytes& bytes, double hertz);

} // namespace tarquil
