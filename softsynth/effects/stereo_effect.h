// The stereo effect of a channel: delay, chorus or flanger; also the master bus's delay.
//
// Own design.  Two delay lines (delay_line.h); chorus and flanger sweep theirs with an oscillator
// v(t) in -1..1, the right side a quarter period ahead of the left:
//
//   d(t) = v(t) * amount / 2 + delay + amount / 2     samples
//
// Stable for every setting: feedback stays at or below 0.9.

#pragma once

#include <array>
#include <cstdint>

#include "softsynth/effects/delay_line.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/tempo_values.h"
#include "softsynth/signal/buffer.h"
#include "softsynth/wavetables/oscillator.h"

namespace tarquil {

// What a stereo effect works with besides its memory; any number of them may use one in turn.
struct StereoEffectScratch {
    explicit StereoEffectScratch(const WaveformStore& sweeping_waves);

    const WaveformStore& waves; // that the delays are swept with
    MonoBuffer delay;           // of each sample of the block, in samples
    MonoBuffer pitch;           // the sweeping oscillator's ratio: 1 throughout

    // Null, or what the delays' times and the sweeps' speeds follow.
    const TempoValues* tempo = nullptr;
};

class StereoEffect {
  public:
    using effect_type = StereoEffectType;
    using enum StereoEffectType;

    // Adds wet * effect to `out`, which may be `in`.  A change of type clears the echoes; a past
    // keeps the type that it was split with.
    //
    //   p1..p5, 0..127    delay             chorus             flanger
    //   p1                left 0.01..1 s    delay 20..30 ms    delay 25..245.5 samples
    //   p2                right 0.01..1 s   LFO 0..6 Hz        LFO 0..6 Hz
    //   p3                feedback 0..0.9   LFO 0..6 ms        LFO 0..6 ms
    //   p4                                  LFO waveform, an OscType
    //   p5                                                     feedback 0..0.9
    void render(effect_type new_type, const StereoBuffer& in, StereoBuffer& out, int p1, int p2,
                int p3, int p4, int p5, float wet, StereoEffectScratch& scratch,
                DelayLine::Part part = DelayLine::Part::PRESENT);

    // Clears the echoes.
    void reset();

    // As DelayLine::split, after a change of type to `past_type` if it is another.
    void split(effect_type past_type);

    // Times in seconds, cut to whole samples.
    void render_delay(const StereoBuffer& in, StereoBuffer& out, float left_seconds,
                      float right_seconds, float feedback, float wet,
                      DelayLine::Part part = DelayLine::Part::PRESENT);

    // Sweeps between delay_samples and delay_samples + lfo_amount_samples.
    void render_lfoed_delay(const StereoBuffer& in, StereoBuffer& out, float delay_samples,
                            float feedback, float wet, float lfo_speed_hz, float lfo_amount_samples,
                            OscType lfo_type, StereoEffectScratch& scratch,
                            DelayLine::Part part = DelayLine::Part::PRESENT);

  private:
    void render_followed_delay(const StereoBuffer& in, StereoBuffer& out,
                               const std::array<float, 2>& samples, float feedback, float wet,
                               DelayLine::Part part);

    // settings
    effect_type type = STEREO_EFFECT_OFF; // of the previous block
    std::array<float, 2> followed{};      // delays of the previous block by a tempo, in samples

    // memory
    DelayLine delay_lines[2]; // left, right
    Oscillator lfo;
    float lfo_phase = 0.0F;      // cycles, at the start of the next block
    float past_lfo_phase = 0.0F; // the past's
};

} // namespace tarquil
