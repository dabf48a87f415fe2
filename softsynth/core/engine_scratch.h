// What rendering a block's channels needs and no later block does: the engine's one set of buffers.
#pragma once

#include "softsynth/core/master_section.h"
#include "softsynth/voices/channel_output.h"
#include "softsynth/voices/channel_scratch.h"
namespace tarquil {

struct EngineScratch {
    explicit EngineScratch(const WaveformStore& all_waves) : waves(all_waves), channel(all_waves) {}

    const WaveformStore& waves;
    Buses buses; // when the master section has its own at work
    ChannelScratch channel;
    ChannelOutput channel_output;
};

} // namespace tarquil
