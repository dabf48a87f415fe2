// What the audio thread tells the editor, without locks.

#pragma once

#include <atomic>
#include <cstdint>

#include "softsynth/effects/multi_compressor.h"

namespace tarquil {

// Written once a block; who shows a value takes it and starts it anew.
struct Meters {
    std::atomic<bool> watched{false}; // nothing is measured for nobody

    // The highest absolute sample since it was taken.
    std::atomic<float> peak_left{0.0F};
    std::atomic<float> peak_right{0.0F};

    std::atomic<uint32_t> played_channels{0}; // bit c: channel c had a note-on since it was taken
    std::atomic<int> voices{0};               // sounding now

    // Of the master compressor's bands, linear, at the block's end: the follower's level and the
    // gain without makeup.
    std::atomic<float> band_levels[MC_N_BANDS]{};
    std::atomic<float> band_gains[MC_N_BANDS]{};
};

} // namespace tarquil
