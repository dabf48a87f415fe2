// What rendering a channel needs besides the channel: buffers that all channels use in turn.

#pragma once

#include <cstdint>
#include <initializer_list>

#include "softsynth/effects/stereo_effect.h"
#include "softsynth/parameters/families.h"
#include "softsynth/signal/buffer.h"

namespace tarquil {

struct ChannelScratch {
    explicit ChannelScratch(const WaveformStore& waves) : stereo_effect(waves) {}

    // Sizes all buffers for a block.
    void init(uint32_t size) {
        for (MonoBuffer* buffer : {&signal, &volume, &left_gain, &right_gain})
            buffer->init(size);
        for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
            cutoff[i].init(size);
            resonance[i].init(size);
        }
    }

    MonoBuffer signal; // the voices' sum on its way through the inserts and filters
    MonoBuffer volume;
    MonoBuffer left_gain;
    MonoBuffer right_gain;

    // Of the insert effects' filters: a value at every CONTROL_PERIOD samples.
    MonoBuffer cutoff[NUM_MONO_EFFECTS];
    MonoBuffer resonance[NUM_MONO_EFFECTS];

    StereoEffectScratch stereo_effect;
};

} // namespace tarquil
