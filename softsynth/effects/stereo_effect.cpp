// The stereo effect of a channel: delay, chorus or flanger; also the master bus's delay.

#include "softsynth/effects/stereo_effect.h"

#include <algorithm>
#include <cmath>

#include "common/assertion.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/stereo_effect_quantities.h"

namespace tarquil {

namespace {

constexpr auto RATE = float(SAMPLE_RATE);

static_assert(TempoValues::LONGEST_DELAY <= DelayLine::LONGEST_PAST_DELAY);

} // namespace

StereoEffectScratch::StereoEffectScratch(const WaveformStore& sweeping_waves)
    : waves(sweeping_waves) {
    std::fill_n(pitch.get_first_sample_ptr(), MAX_NUM_SAMPLES, 1.0F);
}

void StereoEffect::render(effect_type new_type, const StereoBuffer& in, StereoBuffer& out, int p1,
                          int p2, int p3, int p4, int p5, float wet, StereoEffectScratch& scratch,
                          DelayLine::Part part) {
    if (part == DelayLine::Part::PRESENT && type != new_type) {
        reset();
        type = new_type;
    }
    const TempoValues* const tempo = scratch.tempo;
    const auto lfo_speed_hz = [tempo, p2] {
        return tempo != nullptr ? tempo->sweep_hz(p2) : stereo_lfo_hz(p2);
    };
    const auto lfo_amount = [p3] { return stereo_lfo_samples(p3); };

    switch (new_type) {
    case STEREO_EFFECT_OFF:
        return;
    case STEREO_EFFECT_DELAY:
        if (tempo != nullptr) {
            render_followed_delay(in, out, {tempo->delay_samples(p1), tempo->delay_samples(p2)},
                                  stereo_effect_feedback(p3), wet, part);
            return;
        }
        followed = {};
        render_delay(in, out, stereo_delay_seconds(p1), stereo_delay_seconds(p2),
                     stereo_effect_feedback(p3), wet, part);
        return;
    case STEREO_EFFECT_CHORUS:
        render_lfoed_delay(in, out, chorus_delay_samples(p1), 0.0F, wet, lfo_speed_hz(),
                           lfo_amount(), OscType(p4), scratch, part);
        return;
    case STEREO_EFFECT_FLANGER:
        render_lfoed_delay(in, out, flanger_delay_samples(p1), stereo_effect_feedback(p5), wet,
                           lfo_speed_hz(), lfo_amount(), OscType(p4), scratch, part);
        return;
    default:
        TARQ_ASSERT(0);
    }
}

void StereoEffect::reset() {
    for (DelayLine& line : delay_lines)
        line.reset();
    followed = {};
    lfo_phase = 0.0F;
}

void StereoEffect::split(effect_type past_type) {
    if (type != past_type)
        reset();
    type = past_type;
    for (DelayLine& line : delay_lines)
        line.split();
    past_lfo_phase = lfo_phase;
    lfo_phase = 0.0F;
}

void StereoEffect::render_delay(const StereoBuffer& in, StereoBuffer& out, float left_seconds,
                                float right_seconds, float feedback, float wet,
                                DelayLine::Part part) {
    delay_lines[0].render_no_lfo(in, out, left_seconds * RATE, feedback, wet, DelayLine::LEFT,
                                 part);
    delay_lines[1].render_no_lfo(in, out, right_seconds * RATE, feedback, wet, DelayLine::RIGHT,
                                 part);
}

// A change of tempo moves the echoes without a step.
void StereoEffect::render_followed_delay(const StereoBuffer& in, StereoBuffer& out,
                                         const std::array<float, 2>& samples, float feedback,
                                         float wet, DelayLine::Part part) {
    for (const DelayLine::channel side : {DelayLine::LEFT, DelayLine::RIGHT}) {
        const bool has_moved = followed[side] > 0.0F && followed[side] != samples[side];
        if (has_moved && part == DelayLine::Part::PRESENT)
            delay_lines[side].render_moved(in, out, followed[side], samples[side], feedback, wet,
                                           side);
        else
            delay_lines[side].render_no_lfo(in, out, samples[side], feedback, wet, side, part);
    }
    if (part == DelayLine::Part::PRESENT)
        followed = samples;
}

void StereoEffect::render_lfoed_delay(const StereoBuffer& in, StereoBuffer& out,
                                      float delay_samples, float feedback, float wet,
                                      float lfo_speed_hz, float lfo_amount_samples,
                                      OscType lfo_type, StereoEffectScratch& scratch,
                                      DelayLine::Part part) {
    const uint32_t size = in.get_buf_size();
    const float half_amount = lfo_amount_samples * 0.5F;
    float& phase = part == DelayLine::Part::PAST ? past_lfo_phase : lfo_phase;
    MonoBuffer& delay = scratch.delay;
    delay.init(size);
    scratch.pitch.init(size);
    for (const DelayLine::channel side : {DelayLine::LEFT, DelayLine::RIGHT}) {
        lfo.init(scratch.waves, lfo_type, lfo_speed_hz,
                 std::fmod(float(side) * RIGHT_LFO_LEAD + phase, 1.0F));
        lfo.render_interpolated(delay, scratch.pitch, 0);
        float* delay_buf_ptr = delay.get_first_sample_ptr();
        for (uint32_t i = 0; i < size; i++, delay_buf_ptr++) {
            TARQ_ASSERT(delay.is_valid(delay_buf_ptr));
            // A wave may overshoot -1 (tables read from disk are held to +-2 only); the shortest
            // flanger with the widest sweep must not read ahead of its input then.
            const float f =
                std::max(*delay_buf_ptr * half_amount + delay_samples + half_amount, 1.0F);
            TARQ_ASSERT(f >= 1.0f);
            *delay_buf_ptr = f;
        }
        delay_lines[side].render_with_lfo(in, out, delay, feedback, wet, side, part);
    }
    phase = std::fmod(phase + float(size) * lfo_speed_hz / RATE, 1.0F);
}

} // namespace tarquil
