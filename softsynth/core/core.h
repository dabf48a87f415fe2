// The engine object: sixteen channels, the voices they share and the master section.
//
// One run renders one block: it dispatches the block's events into notes and controller timelines,
// renders every channel into three stereo buses, runs the master chain and writes clipped,
// interleaved stereo.  The engine knows nothing of hosts, files or threads; it is driven by sample
// time alone, and is handed its bank and its wavetables.

#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "instrument/settings.h"
#include "softsynth/core/engine_scratch.h"
#include "softsynth/core/parallel_channels.h"
#include "softsynth/effects/multi_compressor.h"
#include "softsynth/effects/retrigger.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/filters/stereo_filter.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/midi_event.h"
#include "softsynth/parameters/tempo.h"
#include "softsynth/parameters/tempo_values.h"
#include "softsynth/reverb/revmodel.h"
#include "softsynth/voices/channel.h"
#include "softsynth/voices/voice_pool.h"
#include "softsynth/voices/voice_renderer.h"
#include "softsynth/wavetables/phase_random.h"

namespace tarquil {

inline constexpr size_t TARQUIL_ALIGN = 64; // a cache line, and the widest lanes
inline constexpr intptr_t TARQUIL_ALIGN_MASK = TARQUIL_ALIGN - 1;

class Tarquil {
  public:
    // Aligned to TARQUIL_ALIGN, which all buffers inside rely on.  An engine is large (about 12
    // MB): it lives on the heap.
    static void* operator new(size_t size);
    static void operator delete(void* synth);

    // Channel c starts with instrument c of `bank`, whose choice bytes are within their lists (see
    // checked_load.h).  Bank and waves stay as long as the engine, or the bank until another one
    // takes its place.
    Tarquil(const TarqSettings& bank, const WaveformStore& waves);
    Tarquil(const Tarquil&) = delete;
    Tarquil& operator=(const Tarquil&) = delete;

    // Renders `num_samples` frames (at most MAX_NUM_SAMPLES, a multiple of GRANULARITY) that start
    // at the absolute sample time `time` into `pcm_out`, interleaved left/right within -1..1.
    // Events are sorted by time and lie in [time, time + num_samples); the pointer is never null.
    void run(float* pcm_out, uint32_t num_samples, const midi_event* events, uint32_t num_events,
             uint32_t time);

    // Between two runs, the next of which would start at `now`: lets the clock start `frames`
    // later, so that the next run starts at `now - frames`.  Inaudible when that is still beyond
    // the longest envelope and portamento (MIN_MOVED_CLOCK).
    void move_clock_back(uint32_t frames, uint32_t now);

    // The earliest time that a moved clock may show: 6087 s, longer than any slope that a note has.
    static constexpr uint32_t MIN_MOVED_CLOCK = 0x10000000;

    VoicePool& get_voice_pool() { return voice_pool; }
    // Active voices of all channels.
    [[nodiscard]] int num_voices() const;

    // Between two runs: the bank whose instruments program changes take from now on.  Nothing that
    // plays changes.
    void set_settings(const TarqSettings& bank) { settings = &bank; }
    [[nodiscard]] const TarqSettings& get_settings() const { return *settings; }

    [[nodiscard]] const MultiCompressor& get_compressor() const { return compressor; }

    // Silences a band (0..MC_N_BANDS - 1) of the master compressor from the next run on, or lets it
    // sound again; any thread may call this.
    void set_band_muted(unsigned band, bool muted);
    [[nodiscard]] bool is_band_muted(unsigned band) const;

    // What the next run's delays, LFOs and retrigger follow, as note lengths (followed_length),
    // from its first sample on; as at first: nothing, their own times hold.
    void set_tempo(const Tempo& now);

    // Restarts the random start phases of the oscillators.
    void seed_phases(uint32_t seed) { phase_random.seed(seed); }

    // Before the first run: heavy blocks are rendered by this one's threads, with the same bytes.
    // It stays as long as the engine.  Allocates.
    void set_runner(JobRunner& runner) {
        parallel = std::make_unique<ParallelChannels>(runner, scratch.waves);
    }

    // The last note of the channels in `mask` (bit c: channel c) that is not being silenced, at
    // the end of the last block, [start, start + num_samples).
    [[nodiscard]] NoteView newest_note(uint32_t mask, uint32_t start, uint32_t num_samples) const;

    // Null, or NUM_CHANNELS buffers: each run sizes them and stores what each channel adds to the
    // main bus.  Their sum in channel order is the main bus before the master section.
    void set_channel_taps(StereoBuffer* taps) { channel_taps = taps; }

  private:
    void process_midi_messages(const midi_event* events, uint32_t num_events);
    void render(float* pcm_out, uint32_t num_samples, uint32_t time);

    // Fades out the echoes of the master section from `time` on; what is sent to them until the
    // block's end in which the fade ends is lost with them.
    void silence_echoes(uint32_t time);
    void render_channels(uint32_t num_samples, uint32_t time);
    [[nodiscard]] VoiceSet active_voices() const;
    void render_aux_returns(uint32_t time);
    void end_echo_fade();
    void render_global_filters();
    void render_retrigger(uint32_t time);
    void render_pre_gain();
    void render_compressor();

    // The global controllers live in channel 0.
    const Controller& global(unsigned number) {
        return channels[0].get_controllers().get_controller(number);
    }

    TimelineMemory timelines; // outlives the controllers
    Channel channels[NUM_CHANNELS];
    VoicePool voice_pool;
    VoiceRenderer voice_renderer;
    revmodel reverb;
    StereoEffect delay;
    RetriggerBox retrigger;
    StereoFilter global_filters[NUM_GLOBAL_FILTERS];
    StereoFilter aux_filter;
    MultiCompressor compressor;
    const TarqSettings* settings;
    PhaseRandom phase_random;
    Tempo tempo;
    TempoValues tempo_values;
    StereoBuffer* channel_taps = nullptr;
    bool echoes_fade = false;
    uint32_t echo_fade_start = 0;
    std::atomic<bool> band_muted[MC_N_BANDS] = {};
    EngineScratch scratch;
    std::unique_ptr<ParallelChannels> parallel; // or none
};

} // namespace tarquil
