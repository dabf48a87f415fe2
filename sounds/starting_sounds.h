// What a new instance plays: the General MIDI set that comes with the program.

#pragma once

#include "player/player.h"

namespace tarquil {

// Drums and laws for when the player's dialect is General MIDI; its sounds stay what they are.
void give_drums(Player& player);

// The whole set.
void give_starting_sounds(Player& player);

} // namespace tarquil
