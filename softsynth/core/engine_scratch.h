// What rendering a block's channels needs and no later block does: the engine's one set of buffers.
#pragma once

#include "softsynth/core/master_section.h"
#include "softsynth/voices/channel_output.h"
#include "softsynth/voices/channel_scratch.h"
namespace tarquil {

struct EngineScratch {
    explicit EngineScratch(const WaveformStore& all_waves)
        : waves(all_waves), channel(all_waves), voice_sums(all_waves) {}

    const WaveformStore& waves;
    ChannelScratch channel;
    ChannelOutput channel_output;

    // of stages, while others are at work with what is theirs
    ChannelScratch voice_sums;
    Buses buses;
};

} // namespace tarquil
