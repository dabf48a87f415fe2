// What a host hands over with a block, brought into the order of its frames.
//
// VST 3 gives notes in one list and the points of each parameter in another.

#pragma once

#include <array>
#include <cstdint>

#include "formats/vst3/abi/component.h"
#include "player/hosted_player.h"

namespace tarquil::vst3 {

// For the audio thread; fixed memory.
class Input {
  public:
    // The next block is the first after an activation.
    void start() { is_first = true; }

    // Hands all of it to the player, which is within a block.
    void play(HostedPlayer& hosted, ProcessData& data);

  private:
    // A point of a parameter or a note; of those of one frame, parameters come first, as they were
    // listed.
    struct Item {
        int32_t frame = 0;
        uint32_t order = 0;
        ParameterId id = NOTE;
        double value = 0;
        int32_t event = 0; // its place in the list
    };
    static constexpr ParameterId NOTE = UINT32_MAX;
    static constexpr size_t CAPACITY = 16384;

    void add(HostedPlayer& hosted, ProcessData& data, const Item& item);
    void play_items(HostedPlayer& hosted, ProcessData& data);

    bool is_first = true;

    std::array<Item, CAPACITY> items;
    uint32_t num_items = 0;
};

} // namespace tarquil::vst3
