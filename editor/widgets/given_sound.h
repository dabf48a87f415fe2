// What the user is told when a channel has got a sound.

#pragma once

#include "editor/kit/ui_host.h"

namespace tarquil {

void tell_given_sound(UiHost& host, unsigned channel);

} // namespace tarquil
