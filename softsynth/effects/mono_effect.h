// An insert effect of a channel: distortion, compressor, bit and rate reducer, filter or exciter.
//
// Own design; the curves are those of distortion.h and compressor.h, the filters those of filter.h
// and ladderfilter.h.  The rest is memoryless between blocks:
//
//   lo-fi     y = x cut to a multiple of 2^-24, its lowest bits cleared, held for some samples
//   exciter   y = x + |x| k^3, an even-order component whose sign follows k in -1..1
//
// Stable for every setting.  State that has become infinite or not a number is cleared at the end
// of the block.

#pragma once

#include <cstdint>

#include "softsynth/effects/compressor.h"
#include "softsynth/filters/filter.h"
#include "softsynth/filters/ladderfilter.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/signal/buffer.h"

namespace tarquil {

class MonoEffect {
  public:
    using effect_type = MonoEffectType;
    using enum MonoEffectType;

    // In place.  The filter alone reads `cutoff` (octaves above 20 Hz) and `resonance` (Q), at
    // every CONTROL_PERIOD samples from the first on.  A change of type restarts the effect.
    //
    //   0..127    distortion      compressor          lo-fi             filter         exciter
    //   param1    threshold ..1.5 threshold ..1.5     bits off 0..24    -              k -1..1
    //   param2    drive 1..20     ratio 1..64 (inf)   held for 1..128   -
    //   param3    post gain 0..8  attack 0..20 ms                       type mod 25
    //   param4    asymmetry 0..1  release 20 ms..1 s                    sections mod 5
    //   param5                    makeup gain 0..20
    void render(effect_type new_type, MonoBuffer& buf, int param1, int param2, int param3,
                int param4, int param5, const MonoBuffer& cutoff, const MonoBuffer& resonance);

  private:
    static void render_distortion(MonoBuffer& buf, int p1, int p2, int p3, int p4);
    void render_compression(MonoBuffer& buf, int p1, int p2, int p3, int p4, int p5);
    static void render_lofi(MonoBuffer& buf, int p1, int p2);
    void render_filter(MonoBuffer& buf, int p3, int p4, const MonoBuffer& cutoff,
                       const MonoBuffer& resonance);
    static void render_exciter(MonoBuffer& buf, int p1);

    void reset_compressor();

    // settings
    effect_type type = MONO_EFFECT_OFF; // of the previous block

    // memory
    float peak = COMPRESSOR_START_LEVEL;
    float level = COMPRESSOR_START_LEVEL;
    float gain = 0.0F; // of the last sample
    Filter filter;
    int last_filter_type = 0; // of the previous block, 0..24
    LadderFilter ladder_filter;
};

} // namespace tarquil
