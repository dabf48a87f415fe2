// What a new instance plays.

#include "sounds/starting_sounds.h"

#include "sounds/shipped_sounds.h"

namespace tarquil {

void give_drums(Player& player) {
    player.set_gm_set(shipped_gm_set());
}

void give_starting_sounds(Player& player) {
    give_drums(player);
    player.set_bank(shipped_gm_bank());
}

} // namespace tarquil
