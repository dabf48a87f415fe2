// What plays at first opening.

#include "sounds/first_sounds.h"

#include "sounds/shipped_sounds.h"

namespace tarquil {

void give_first_sounds(Player& player) {
    // One for all players of the process.
    static const std::shared_ptr<const GmSet> set = [] {
        auto made = std::make_shared<GmSet>();
        made->map = shipped_gm_map();
        made->drums = std::make_unique<TarqSettings>(shipped_gm_drums());
        return made;
    }();
    player.set_gm_set(set);
    player.set_bank(shipped_gm_bank());
}

} // namespace tarquil
