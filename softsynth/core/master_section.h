// What follows the channels: reverb, delay, global filters, retrigger, gain and compressor, in a
// fixed order, and the output's clip.

#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

#include "softsynth/core/master_settings.h"
#include "softsynth/effects/multi_compressor.h"
#include "softsynth/effects/retrigger.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/filters/stereo_filter.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/tempo.h"
#include "softsynth/parameters/tempo_values.h"
#include "softsynth/reverb/revmodel.h"
#include "softsynth/signal/buffer.h"
#include "softsynth/voices/chain_settings.h"

namespace tarquil {

// Main, reverb send, delay send.
using Buses = StereoBuffer[NUM_AUX_BUSES];

void clear(Buses& buses, uint32_t size);

class MasterSection {
  public:
    explicit MasterSection(const WaveformStore& waves);
    MasterSection(const MasterSection&) = delete;
    MasterSection& operator=(const MasterSection&) = delete;

    // What the delay and the retrigger follow from the next block on.
    void follow(const Tempo& now);

    // The buses of a block, to be filled before `render`.
    Buses& get_buses() { return buses; }

    // From the next block on, what is put out lies within -bound..bound; 1 at first.
    void set_output_bound(float bound) { output_bound = bound; }

    // Writes the block that starts at `time`, interleaved stereo within the bound.  From `silence`
    // on the echoes fade, unless they do already; what is sent to them until the block's end in
    // which the fade ends is lost with them.
    void render(const MasterSettings& settings, uint32_t time, std::optional<uint32_t> silence,
                float* pcm_out);

    void move_clock_back(uint32_t frames) { echo_fade_start -= frames; }

    [[nodiscard]] const MultiCompressor& get_compressor() const { return compressor; }

    // See Tarquil.
    void set_band_muted(unsigned band, bool muted);
    [[nodiscard]] bool is_band_muted(unsigned band) const;

  private:
    void render_aux_returns(const MasterSettings& settings, uint32_t time);
    void end_echo_fade();
    void render_global_filters(const MasterSettings& settings);
    void render_retrigger(const MasterSettings::Retrigger& settings, uint32_t time);
    void render_pre_gain(float gain);
    void render_compressor(const MasterSettings::Compressor& settings);

    // memory
    revmodel reverb;
    StereoEffect delay;
    RetriggerBox retrigger;
    StereoFilter global_filters[NUM_GLOBAL_FILTERS];
    StereoFilter aux_filter;
    MultiCompressor compressor;
    bool echoes_fade = false;
    uint32_t echo_fade_start = 0;

    Tempo tempo;
    TempoValues tempo_values;
    std::atomic<bool> band_muted[MC_N_BANDS] = {};
    float output_bound = 1.0F;

    // scratch
    Buses buses;
    StereoBuffer aux_return; // what reverb and delay give back
    MonoBuffer retrigger_bpm;
    MonoBuffer retrigger_speedup;
    MonoBuffer retrigger_wet;
    StereoEffectScratch delay_scratch;
};

} // namespace tarquil
