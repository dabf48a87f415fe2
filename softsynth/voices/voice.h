// One sounding note: three oscillator groups, envelopes, LFOs, modulation and a filter.
//
// At note-on a voice takes a snapshot of all the channel's controllers, so that later changes do
// not reach it; only pitch bend, LFO speed, oscillator mix and volume, cutoff and resonance are
// read from the channel's timelines in every block.  A block is rendered in three steps, each for
// many voices before the next one: control signals and oscillators (here), the filter
// (voice_filters), amplitude and sum (here again).

#pragma once

#include <cstdint>

#include "softsynth/filters/filter.h"
#include "softsynth/filters/ladderfilter.h"
#include "softsynth/parameters/controller_number.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/note_view.h"
#include "softsynth/voices/envelope.h"
#include "softsynth/voices/voice_scratch.h"
#include "softsynth/voices/voice_signals.h"
#include "softsynth/wavetables/oscillator.h"
#include "softsynth/wavetables/oscillator_group.h"

namespace tarquil {

class Channel;
class SoundControls;

class Voice {
  public:
    // Starts the note (0..127) with velocity 1..127 at the absolute sample time `time`.
    void note_on(Channel& new_channel, int new_note, int velocity, uint32_t time);

    // Renders the block's signals, up to the filter: `size` samples from the time `start` on.
    void render_signals(VoiceScratch& scratch, uint32_t start, uint32_t size);

    [[nodiscard]] VoiceSignals& get_signals() { return signals; }
    // Null when the voice has biquads instead.
    [[nodiscard]] LadderFilter* get_ladder() { return use_ladder ? &ladder_filter : nullptr; }
    [[nodiscard]] Filter& get_biquads() { return filter; }

    // Adds the filtered signal of the block that starts at `start`, times the amplitude, to `out`;
    // the voice frees itself in the block in which it ends.
    void add_output(MonoBuffer& out, uint32_t start);

    // Writes the pitch ratio (portamento and bend) at every 32nd sample from `active_start` on.
    void render_pitch_buffer(MonoBuffer& buf, uint32_t start, uint32_t active_start) const;

    // The channel fades the voice out, and frees it then; no controller reaches it any more.
    void start_fade() { fading = true; }
    [[nodiscard]] bool is_fading() const { return fading; }

    void notify_note_off(uint32_t time);
    // Fades the voice out over 32 samples from `time` on.
    void note_cut(uint32_t time);
    void free();

    // Lets the clock start `frames` later; `new_start_time` is the note-on on the new clock.
    void move_clock_back(uint32_t frames, uint32_t new_start_time);

    [[nodiscard]] bool is_active() const { return channel != nullptr; }
    [[nodiscard]] bool is_cut() const;
    [[nodiscard]] bool belongs_to_channel(const Channel& other) const { return channel == &other; }
    [[nodiscard]] uint32_t get_start_time() const { return start_time; }
    [[nodiscard]] int get_note() const { return note; }
    // About how many core cycles a sample takes.
    [[nodiscard]] uint32_t get_cost() const;

    // How it stands at the end of the last block, [start, start + size).  All but the channel.
    [[nodiscard]] NoteView view(uint32_t start, uint32_t size) const;

  private:
    static constexpr unsigned NUM_GROUPS = NUM_OSCILLATORS;

    // The samples of a block at which a signal has a value: from `first` on, one every `step`.
    struct Grid;

    // A slot of modulation, as the note found it.
    struct Modulation {
        unsigned source = INFL_NONE;
        bool multiplies = false; // instead of adding
        float amount = 0.0F;
    };

    void init_modulation();
    void init_oscillators();
    void init_envelopes(uint32_t time, int velocity);
    void init_portamento(float frequency);
    void init_filter(float frequency);

    // Each leaves its signals in the scratch and the voice's rows; the note's first sample within
    // the block is `offset`.
    void render_envelopes(VoiceScratch& scratch, uint32_t start, uint32_t end);
    void render_lfos(VoiceScratch& scratch, uint32_t start, uint32_t offset);
    [[nodiscard]] bool is_read_at_controls_only(unsigned source, uint32_t offset) const;
    void render_group(VoiceScratch& scratch, unsigned group, uint32_t offset);
    void mix_groups(VoiceScratch& scratch, uint32_t start, uint32_t offset);
    // `volume` is the third group's, `mix` the way from the first to the second: each a row, or
    // what holds throughout.
    template <typename Volume, typename Mix>
    void mix_groups_with(const VoiceScratch& scratch, const Volume& volume, const Mix& mix);
    void render_filter_controls(VoiceScratch& scratch, uint32_t start);

    // Adds the source of slot `slot` to a signal, scaled by its amount, or multiplies by it.
    void possibly_influence(float* dest, const Grid& grid, const VoiceScratch& scratch,
                            unsigned slot, float scale) const {
        if (modulations[slot].source != INFL_NONE)
            influence(dest, grid, scratch, modulations[slot], scale);
    }
    static void influence(float* dest, const Grid& grid, const VoiceScratch& scratch,
                          const Modulation& modulation, float scale);

    [[nodiscard]] bool is_in_use(unsigned source) const {
        return (used_sources >> source & 1U) != 0;
    }
    // What is read live.
    [[nodiscard]] SoundControls get_controls() const;

    void add_pitch_bend(float* ratios, uint32_t start, uint32_t active_start, uint32_t end) const;

    Channel* channel = nullptr; // null: the voice is free
    uint32_t start_time = 0;
    int note = 0;
    bool fading = false;
    float velocity_scale = 0.0F;

    // settings of the note
    Modulation modulations[NUM_MODULATION_SLOTS];
    uint32_t used_sources = 0; // by bit
    float group_gains[NUM_GROUPS] = {};
    bool is_ring_modulated = false;
    uint32_t portamento_length = 0;

    OscillatorGroup oscillators[NUM_GROUPS];
    Envelope envelopes[NUM_ENVELOPES];
    Filter filter;
    bool use_ladder = false;
    LadderFilter ladder_filter;
    float portamento_start = 1.0F; // the previous note's frequency as a ratio to this note's
    Oscillator lfos[NUM_LFOS];

    int controller_values_int[NUM_CONTROLLERS] = {};
    float controller_values[NUM_CONTROLLERS] = {};
    float cubed_controller_values[NUM_CONTROLLERS] = {};

    VoiceSignals signals;
};

} // namespace tarquil
