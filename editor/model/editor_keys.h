// What the editor's keyboard shows: the keys that sound and where the wheels and pedals stand.

#pragma once

#include <array>
#include <bitset>

#include "softsynth/parameters/constants.h"

namespace tarquil {

struct EditorKeys {
    static constexpr unsigned NUM_KEYS = 128;
    static constexpr unsigned BEND_CENTRE = 8192;
    static constexpr unsigned MAX_BEND = 16383;

    struct Channel {
        std::bitset<NUM_KEYS> keys;  // that sound, or were struck since the last reading
        unsigned bend = BEND_CENTRE; // 0..MAX_BEND
        unsigned modulation = 0;     // 0..127
        bool is_sustained = false;

        bool operator==(const Channel& other) const = default;
    };

    std::array<Channel, NUM_CHANNELS> channels;

    bool operator==(const EditorKeys& other) const = default;
};

} // namespace tarquil
