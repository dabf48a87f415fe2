// What follows a channel's voices: insert effects, filters, volume, pan and the stereo effect.

#pragma once

#include <cstdint>

#include "softsynth/effects/mono_effect.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/filters/filter.h"
#include "softsynth/parameters/families.h"
#include "softsynth/voices/channel_scratch.h"
#include "softsynth/voices/sound_controls.h"

namespace tarquil {

class ChannelChain {
  public:
    // Makes the scratch's mix of its signal, for the block that starts at `start`.  The stereo
    // effect belongs to the channel, since its memory is large.
    void render(const SoundControls& controls, uint32_t start, StereoEffect& stereo_effect,
                DelayLine::Part part, ChannelScratch& scratch);

    // Clears all memory.
    void reset() { *this = ChannelChain(); }

  private:
    static void render_insert_effect(MonoEffect& effect, const EffectRows& rows,
                                     const SoundControls& controls, uint32_t start,
                                     ChannelScratch& scratch);
    void render_filters(const SoundControls& controls, MonoBuffer& signal);

    Filter filters[NUM_CHANNEL_FILTERS];
    MonoEffect insert_effects[NUM_MONO_EFFECTS];
};

} // namespace tarquil
