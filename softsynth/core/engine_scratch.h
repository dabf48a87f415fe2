// What rendering a block needs and no later block does: the engine's one set of buffers.

#pragma once

#include <cstdint>
#include <initializer_list>

#include "softsynth/signal/buffer.h"
#include "softsynth/voices/channel.h"
#include "softsynth/voices/channel_scratch.h"

namespace tarquil {

struct EngineScratch {
    explicit EngineScratch(const WaveformStore& all_waves) : waves(all_waves), channel(all_waves) {}

    // Sizes the buses and the retrigger's controls for a block, and clears the buses.
    void init(uint32_t size) {
        for (StereoBuffer& bus : buses) {
            bus.init(size);
            bus.nullify();
        }
        aux_return.init(size);
        aux_return.nullify();
        for (MonoBuffer* buffer : {&retrigger_bpm, &retrigger_speedup, &retrigger_wet})
            buffer->init(size);
    }

    const WaveformStore& waves;

    StereoBuffer buses[NUM_AUX_BUSES];
    StereoBuffer aux_return; // what reverb and delay give back
    MonoBuffer retrigger_bpm;
    MonoBuffer retrigger_speedup;
    MonoBuffer retrigger_wet;

    ChannelScratch channel;
    ChannelOutput channel_output;
};

} // namespace tarquil
