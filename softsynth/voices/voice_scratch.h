// What rendering a voice's signals needs besides the voice: buffers that all voices use in turn.

#pragma once

#include <initializer_list>

#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/tempo_values.h"
#include "softsynth/signal/buffer.h"

namespace tarquil {

struct VoiceScratch {
    // Sizes all buffers for a block.
    void init(uint32_t size) {
        for (MonoBuffer* buffer : {&pitch, &modulated_pitch, &mix, &volume, &cutoff})
            buffer->init(size);
        for (MonoBuffer& source : sources)
            source.init(size);
    }

    // Room for the sources of modulation, by their number; the resonance has a value at every
    // CONTROL_PERIOD samples only, unless it modulates the amplitude.
    MonoBuffer sources[INFL_END_MARKER];
    // Where the voice's signals lie: there, in its own row of amplitudes (the first envelope), or,
    // for an oscillator that is off, in `zeros`.
    const float* signals[INFL_END_MARKER] = {};
    const float zeros[MAX_NUM_SAMPLES] = {};

    // A value at every CONTROL_PERIOD samples, as ratios and octaves.
    MonoBuffer pitch;
    MonoBuffer modulated_pitch;
    MonoBuffer cutoff;

    MonoBuffer mix;
    MonoBuffer volume;

    // Null, or what the LFOs' speeds follow.
    const TempoValues* tempo = nullptr;
};

} // namespace tarquil
