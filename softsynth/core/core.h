// The engine object: sixteen channels, the voices they share and the master section.
//
// One run renders one block: it dispatches the block's events into notes and controller timelines,
// renders every channel into three stereo buses, runs the master chain and writes clipped,
// interleaved stereo.  The engine knows nothing of hosts, files or threads; it is driven by sample
// time alone, and is handed its bank and its wavetables.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "instrument/settings.h"
#include "softsynth/core/engine_scratch.h"
#include "softsynth/core/master_section.h"
#include "softsynth/core/parallel_channels.h"
#include "softsynth/core/staged_block.h"
#include "softsynth/parameters/midi_event.h"
#include "softsynth/parameters/tempo.h"
#include "softsynth/parameters/tempo_values.h"
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
    // at the absolute sample time `time` into `pcm_out`, interleaved left/right within the bound.
    // Events are sorted by time and lie in [time, time + num_samples); the pointer is never null.
    void run(float* pcm_out, uint32_t num_samples, const midi_event* events, uint32_t num_events,
             uint32_t time);

    // A run in three stages: events and voices, the channels' chains, the master section.  Threads
    // may do stages of different blocks at the same time, each stage's blocks in order.  The tempo
    // is not that of `set_tempo` then, and no runner helps.  Allocates.
    void run_voices(StagedBlock& block, const midi_event* events, uint32_t num_events);
    void run_channels(StagedBlock& block);
    void run_master(const StagedBlock& block, float* pcm_out);

    // Between two runs, the next of which would start at `now`: lets the clock start `frames`
    // later, so that the next run starts at `now - frames`.  Inaudible when that is still beyond
    // the longest envelope and portamento (MIN_MOVED_CLOCK).
    void move_clock_back(uint32_t frames, uint32_t now);
    // The same in stages, of which the second has no clock.
    void move_voices_clock_back(uint32_t frames, uint32_t now);
    void move_master_clock_back(uint32_t frames) { master.move_clock_back(frames); }

    // The earliest time that a moved clock may show: 6087 s, longer than any slope that a note has.
    static constexpr uint32_t MIN_MOVED_CLOCK = 0x10000000;

    VoicePool& get_voice_pool() { return voice_pool; }
    // Active voices of all channels.
    [[nodiscard]] int num_voices() const;

    // Between two runs: the bank whose instruments program changes take from now on.  Nothing that
    // plays changes.
    void set_settings(const TarqSettings& bank) { settings = &bank; }
    [[nodiscard]] const TarqSettings& get_settings() const { return *settings; }

    [[nodiscard]] const MultiCompressor& get_compressor() const { return master.get_compressor(); }

    // Silences a band (0..MC_N_BANDS - 1) of the master compressor from the next run on, or lets it
    // sound again; any thread may call this.
    void set_band_muted(unsigned band, bool muted) { master.set_band_muted(band, muted); }
    [[nodiscard]] bool is_band_muted(unsigned band) const { return master.is_band_muted(band); }

    // Where the output is clipped from the next run on, for those whose sound meets a limiter; 1 at
    // first.
    void set_output_bound(float bound) { master.set_output_bound(bound); }

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
    void follow_tempo(const Tempo& now);
    void follow_chain_tempo(const Tempo& now);
    void process_midi_messages(const midi_event* events, uint32_t num_events);
    void render_voices(uint32_t num_samples, uint32_t time);
    void render_channels(Buses& buses, uint32_t num_samples, uint32_t time);
    // Those that sound, by their places in the pool.
    std::span<Voice* const> list_voices(std::span<Voice*, VoicePool::NUM_VOICES> places);
    void follow_globals();
    [[nodiscard]] VoiceSet active_voices() const;

    TimelineMemory timelines; // outlives the controllers
    Channel channels[NUM_CHANNELS];
    VoicePool voice_pool;
    VoiceRenderer voice_renderer;
    const TarqSettings* settings;
    PhaseRandom phase_random;
    TempoValues tempo_values; // the voices'
    TempoValues chain_tempo;
    StereoBuffer* channel_taps = nullptr;
    std::optional<uint32_t> echo_silence; // the first of the block
    MasterSettings master_settings;       // of the global controllers, which live in channel 0,
    uint32_t globals_count = UINT32_MAX;  // after so many changes; none yet
    MasterSection master;
    EngineScratch scratch;
    std::unique_ptr<ParallelChannels> parallel; // or none
};

} // namespace tarquil
