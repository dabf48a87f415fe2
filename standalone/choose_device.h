// The device of the user's choice.

#pragma once

#include "standalone/devices.h"

namespace tarquil {

// Opens it, and from then on the same again.  Where the user leaves it open: JACK, else ALSA, else,
// if `may_be_silent`, none, which `reason` explains.  The player outlives the function.  `listener`
// hears what is played where nobody else does.
OpenDevice choose_device(DevicePlayer& player, const DeviceChoice& choice, bool may_be_silent,
                         Listener listener = nullptr);

// What --device takes here, one a line.
std::string list_devices();

} // namespace tarquil
