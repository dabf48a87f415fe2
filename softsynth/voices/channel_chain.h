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
    // Leaves in the scratch what `render` reads over time: volume and pan unless the controls are
    // still, and the insert effects' filters.  The block starts at `start`.
    static void render_rows(const ChainSettings& settings, const SoundControls& controls,
                            uint32_t start, ChannelScratch& scratch);

    // Makes `mix` of the scratch's signal.  The stereo effect belongs to the channel, since its
    // memory is large.
    void render(const ChainSettings& settings, bool is_still, StereoEffect& stereo_effect,
                DelayLine::Part part, ChannelScratch& scratch, StereoBuffer& mix);

    // Clears all memory.
    void reset() { *this = ChannelChain(); }

  private:
    void render_filters(const ChainSettings& settings, MonoBuffer& signal);

    Filter filters[NUM_CHANNEL_FILTERS];
    MonoEffect insert_effects[NUM_MONO_EFFECTS];
};

} // namespace tarquil
