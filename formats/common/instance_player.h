// A hosted player as a new instance of a plug-in has it.

#pragma once

#include "player/hosted_player.h"
#include "sounds/starting_sounds.h"

namespace tarquil {

class InstancePlayer : public HostedPlayer {
  public:
    InstancePlayer() { give_starting_sounds(player()); }
};

} // namespace tarquil
