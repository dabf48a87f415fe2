// Linear ADSR envelopes that render any range of their life.
//
// The result does not depend on how the life is cut into blocks, even when the release or a cut
// becomes known only in the block in which it happens.  Times are absolute sample times, lengths
// are in samples and at least 1 (own design).

#pragma once

#include <cstdint>

#include "softsynth/parameters/note_view.h"

namespace tarquil {

struct Envelope {
    uint32_t attack_start_time = 0;
    uint32_t attack_time = 1;
    uint32_t decay_time = 1;
    uint32_t release_time = 1;
    uint32_t release_start_time = 0; // TIME_NEVER: not yet known
    uint32_t cut_time = 0;           // TIME_NEVER: never
    float sustain_level = 0.0F;      // includes the master level
    float master_level = 0.0F;       // the attack's peak
    float release_level = 0.0F;      // the level at release_start_time, known once rendered
};

// A cut voice fades over this many samples.
inline constexpr uint32_t CUT_FADE_LENGTH = 32;

// Starts an envelope at the note-on time `start`.  `sustain` is relative to `master_level`.
void env_init(Envelope* env, uint32_t start, uint32_t attack, uint32_t decay, float sustain,
              uint32_t release, float master_level);

void env_set_release_time(Envelope* env, uint32_t time);
void env_set_cut_time(Envelope* env, uint32_t time);

// Lets the clock start `frames` later.  A time before that becomes 0, which changes nothing when
// the clock's new time is beyond the longest slope.
void env_move_clock_back(Envelope* env, uint32_t frames);

// Writes samples [start_time, end_time) into buf[0 .. end_time - start_time).  The range must end
// after the note-on.
void env_render(Envelope* env, float* buf, uint32_t start_time, uint32_t end_time);

// Where it is at `time`, not before its start, whether or not it is rendered.
EnvelopePosition env_position(const Envelope& env, uint32_t time);

// The first sample time after which the envelope is silent for good.
uint32_t env_get_done_time(const Envelope* env);

} // namespace tarquil
