// How a bank's sounds get into controllers' timelines.

#pragma once

#include <cstdint>

#include "instrument/settings.h"
#include "softsynth/voices/controller.h"

namespace tarquil {

// Change, in number order and at the absolute sample time `time`, every controller of a channel to
// its byte in `instrument`, or every global one to its byte in `bank`.
void emit_program_change(const Instrument& instrument, ControllerArray& controllers, uint32_t time);
void emit_global_controllers(const TarqSettings& bank, ControllerArray& controllers, uint32_t time);

} // namespace tarquil
