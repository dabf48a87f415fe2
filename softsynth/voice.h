// One sounding note: three oscillator groups, envelopes, LFOs, modulation and a filter.
//
// At note-on a voice takes a snapshot of all the channel's controllers, so that later changes do
// not reach it; only pitch bend, LFO speed, oscillator mix and volume, cutoff and resonance are
// read from the channel's timelines in every block.  A block is rendered in three steps: control
// signals and oscillators, the filter, amplitude and sum.

#pragma once

#include <cstdint>

#include "softsynth/buffer.h"
#include "softsynth/controller_number.h"
#include "softsynth/envelope.h"
#include "softsynth/filter.h"
#include "softsynth/influence.h"
#include "softsynth/ladderfilter.h"
#include "softsynth/oscillator.h"
#include "softsynth/oscillator_group.h"

class Channel;

class Voice {
  public:
    // Starts the note (0..127) with velocity 1..127 at the absolute sample time `time`.
    void note_on(Channel& new_channel, int new_note, int velocity, uint32_t time);

    // Adds the block that starts at `start` to `out`; the voice frees itself in the block in which
    // it ends.
    void render(MonoBuffer& out, uint32_t start);

    // Writes the pitch ratio (portamento and bend) at every 32nd sample from `active_start` on.
    void render_pitch_buffer(MonoBuffer& buf, uint32_t start, uint32_t active_start) const;

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

    [[nodiscard]] bool is_influence_in_use(Influence influence) const;

  private:
    static constexpr int NUM_GROUPS = 3;
    static constexpr int NUM_ENVELOPES = 3;
    static constexpr int NUM_LFOS = 2;

    // Scratch buffers by index: pitch ratio, then the sources of modulation (the resonance's
    // doubles as scratch), modulated pitch (later gains, then cutoff) and the voice's output.
    static constexpr unsigned BUF_PITCH = 0;
    static constexpr unsigned BUF_MODULATED = 10;
    static constexpr unsigned BUF_OUTPUT = 11;
    static constexpr unsigned NUM_BUFFERS = 12;

    void init_oscillators();
    void init_envelopes(uint32_t time, int velocity);
    void init_portamento(float frequency);
    void init_filter(float frequency);

    void render_envelopes(uint32_t start, uint32_t end);
    void render_lfos(uint32_t start, uint32_t offset);
    void render_group(int group, uint32_t offset);
    void mix_groups(uint32_t start);
    void render_filter_controls(uint32_t start);
    void render_filter();

    // Adds the slot's source to a scratch buffer, scaled by its amounts; an amount at its top value
    // multiplies instead.
    void possibly_influence(unsigned dest_buffer, unsigned source_controller, float scale);

    void add_pitch_bend(float* ratios, uint32_t start, uint32_t active_start, uint32_t end) const;

    [[nodiscard]] unsigned source_of(unsigned source_controller) const;
    // The mapped amount plus the fine amount of a slot.
    [[nodiscard]] float amount_of(unsigned source_controller) const;
    [[nodiscard]] bool multiplies(unsigned source_controller) const;

    // Shared by all voices: rendering is not reentrant.
    static MonoBuffer buffers[NUM_BUFFERS];

    Channel* channel = nullptr; // null: the voice is free
    uint32_t start_time = 0;
    int note = 0;
    float velocity_scale = 0.0F;

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
};
