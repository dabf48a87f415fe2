// What follows a channel's voices: insert effects, filters, volume, pan and the stereo effect.

#pragma once

#include <cstdint>

#include "softsynth/effects/mono_effect.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/filters/filter.h"
#include "softsynth/parameters/families.h"
#include "softsynth/voices/chain_settings.h"
#include "softsynth/voices/channel_scratch.h"
#include "softsynth/voices/sound_controls.h"

namespace tarquil {

class ChannelChain {
  public:
    // Makes `mix` of the scratch's signal, for the block that starts at `start`.  `settings` are
    // those of the controls, which are read over time too unless they are still.  The stereo effect
    // belongs to the channel, since its memory is large.
    void render(const ChainSettings& settings, const SoundControls& controls, uint32_t start,
                StereoEffect& stereo_effect, DelayLine::Part part, ChannelScratch& scratch,
                StereoBuffer& mix);

    // Clears all memory.
    void reset() { *this = ChannelChain(); }

  private:
    void render_insert_effect(unsigned index, const ChainSettings::Insert& insert,
                              const SoundControls& controls, uint32_t start,
                              ChannelScratch& scratch);
    void render_filters(const ChainSettings& settings, MonoBuffer& signal);

    Filter filters[NUM_CHANNEL_FILTERS];
    MonoEffect insert_effects[NUM_MONO_EFFECTS];
};

} // namespace tarquil
