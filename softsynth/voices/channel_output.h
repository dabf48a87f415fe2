// What a channel's block gives: added to the buses when it is the channel's turn, since the order
// of sums is part of the sound.

#pragma once

#include <cstdint>

#include "softsynth/signal/buffer.h"
#include "softsynth/voices/chain_settings.h"

namespace tarquil {

class ChannelOutput {
  public:
    // Nothing yet, for a block of `new_size` frames.
    void clear(uint32_t new_size) {
        size = new_size;
        num_parts = 0;
    }

    // The next of at most two sounds, one after the other: what fades, what does not.
    StereoBuffer& add(const ChainSettings& settings);
    // Silence that is added all the same, which turns -0 into 0.
    void add_silence(const ChainSettings& settings);

    // Adds all to the buses; `tap`, if given, receives what the main bus does.
    void add_to(StereoBuffer* buses, StereoBuffer* tap) const;

  private:
    struct Part {
        StereoBuffer mix;
        float levels[NUM_AUX_BUSES] = {};
        bool is_silence = false;
    };

    Part& next_part(const ChainSettings& settings);

    Part parts[2];
    uint32_t num_parts = 0;
    uint32_t size = 0;
};

} // namespace tarquil
