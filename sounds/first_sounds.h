// What plays at first opening.

#pragma once

#include "player/player.h"

namespace tarquil {

// A player that has been given nothing yet gets the General MIDI set: its programs and drums, and
// the dialect.  Not for the audio thread.
void give_first_sounds(Player& player);

} // namespace tarquil
