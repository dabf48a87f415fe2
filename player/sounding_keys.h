// Which keys of which channels sound, and where wheels and pedals stand, as the audio thread tells
// it without locks.

#pragma once

#include <array>
#include <atomic>
#include <bitset>
#include <cstdint>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

struct SoundingKeys {
    using Keys = std::bitset<128>;

    // Written by the audio thread alone, but for what is taken.
    struct Channel {
        std::atomic<uint64_t> held[2]{};   // by bits: a key or a pedal holds the note
        std::atomic<uint64_t> struck[2]{}; // since they were taken: a drum may be over at once
        std::atomic<uint16_t> bend{8192};  // 0..16383
        std::atomic<uint8_t> modulation{0};
        std::atomic<bool> is_sustained{false};

        // For who shows them: what is held, and what was struck since the last call.
        Keys take_keys();
        void note_struck(unsigned key);
        void hold(unsigned key, bool is_held);
        void set_held(const Keys& keys);
    };

    // Follows an event of the engine's own, in the native dialect.
    void follow(const midi_event& event);

    std::array<Channel, NUM_CHANNELS> channels;
};

} // namespace tarquil
