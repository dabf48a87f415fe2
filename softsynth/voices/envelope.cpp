// Linear ADSR envelopes that render any range of their life.

#include "softsynth/voices/envelope.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/signal/slope.h"

namespace tarquil {

namespace {

// Attack, decay and sustain over [start, end).
void render_held(const Envelope* env, float* buf, uint32_t start, uint32_t end) {
    const uint32_t attack_end = std::min(env->attack_start_time + env->attack_time, end);
    const uint32_t decay_end = std::min(attack_end + env->decay_time, end);
    uint32_t t = start;

    if (t < env->attack_start_time) {
        const uint32_t silent_end = std::min(env->attack_start_time, end);
        buf = std::fill_n(buf, silent_end - t, 0.0F);
        t = silent_end;
    }

    // Attack and decay step before they write, so that the first sample of a slope has moved and
    // its last one is the target.
    if (t < attack_end) {
        const float slope = env->master_level / float(env->attack_time);
        render_slope(buf, attack_end - t, float(t - env->attack_start_time) * slope + slope, slope);
        buf += attack_end - t;
        t = attack_end;
    }
    if (t < decay_end) {
        const float step = (env->master_level - env->sustain_level) / float(env->decay_time);
        const float value = env->master_level - float(t - attack_end) * step;
        render_slope(buf, decay_end - t, value - step, -step);
        buf += decay_end - t;
        t = decay_end;
    }
    std::fill_n(buf, end - t, env->sustain_level);
}

void apply_release(Envelope* env, float* buf, uint32_t start, uint32_t end) {
    const uint32_t release_start = env->release_start_time;
    if (release_start >= end)
        return;
    if (release_start >= start)
        env->release_level = buf[release_start - start];
    uint32_t t = std::max(release_start, start);
    const uint32_t release_end = std::min(release_start + env->release_time, end);
    // The release writes before it steps: its first sample is the captured level.
    const float step = env->release_level / float(env->release_time);
    if (t < release_end) {
        render_slope(buf + (t - start), release_end - t,
                     env->release_level - float(t - release_start) * step, -step);
        t = release_end;
    }
    std::fill(buf + (t - start), buf + (end - start), 0.0F);
}

void apply_cut(const Envelope* env, float* buf, uint32_t start, uint32_t end) {
    const uint32_t cut = env->cut_time;
    const uint32_t fade_end = std::min(cut + CUT_FADE_LENGTH, end);
    uint32_t t = std::max(cut, start);
    for (; t < fade_end; t++)
        buf[t - start] *= float(int(cut + CUT_FADE_LENGTH - 1 - t)) * (1.0F / CUT_FADE_LENGTH);
    for (; t < end; t++)
        buf[t - start] = 0.0F;
}

// Of the attack's peak, `elapsed` after its start.
EnvelopePosition held_position(const Envelope& env, uint32_t elapsed) {
    const float sustain = env.master_level > 0.0F ? env.sustain_level / env.master_level : 0.0F;
    if (elapsed < env.attack_time)
        return {EnvelopeStage::ATTACK, float(elapsed) / SAMPLE_RATE,
                float(elapsed) / float(env.attack_time)};
    elapsed -= env.attack_time;
    if (elapsed < env.decay_time)
        return {EnvelopeStage::DECAY, float(elapsed) / SAMPLE_RATE,
                1.0F + (sustain - 1.0F) * float(elapsed) / float(env.decay_time)};
    elapsed -= env.decay_time;
    return {EnvelopeStage::SUSTAIN, float(elapsed) / SAMPLE_RATE, sustain};
}

} // namespace

void env_init(Envelope* env, uint32_t start, uint32_t attack, uint32_t decay, float sustain,
              uint32_t release, float master_level) {
    env->attack_start_time = start;
    env->attack_time = attack;
    env->decay_time = decay;
    env->release_time = release;
    env->release_start_time = TIME_NEVER;
    env->cut_time = TIME_NEVER;
    env->sustain_level = sustain * master_level;
    env->master_level = master_level;
    env->release_level = 0.0F;
}

void env_set_release_time(Envelope* env, uint32_t time) {
    env->release_start_time = time;
}

void env_set_cut_time(Envelope* env, uint32_t time) {
    env->cut_time = time;
}

void env_move_clock_back(Envelope* env, uint32_t frames) {
    env->attack_start_time -= std::min(env->attack_start_time, frames);
    for (uint32_t* time : {&env->release_start_time, &env->cut_time}) {
        if (*time < TIME_NEVER)
            *time -= std::min(*time, frames);
    }
}

void env_render(Envelope* env, float* buf, uint32_t start_time, uint32_t end_time) {
    TARQ_ASSERT(env->attack_start_time < end_time);
    if (env->release_start_time >= start_time) // else the release has all of it
        render_held(env, buf, start_time, end_time);
    apply_release(env, buf, start_time, end_time);
    apply_cut(env, buf, start_time, end_time);
}

EnvelopePosition env_position(const Envelope& env, uint32_t time) {
    if (time >= env_get_done_time(&env))
        return {};
    if (time < env.release_start_time)
        return held_position(env, time - env.attack_start_time);
    const uint32_t elapsed = time - env.release_start_time;
    if (elapsed >= env.release_time)
        return {};
    const EnvelopePosition released =
        held_position(env, env.release_start_time - env.attack_start_time);
    return {EnvelopeStage::RELEASE, float(elapsed) / SAMPLE_RATE,
            released.level * (1.0F - float(elapsed) / float(env.release_time))};
}

uint32_t env_get_done_time(const Envelope* env) {
    return std::min(env->release_start_time + env->release_time, env->cut_time + CUT_FADE_LENGTH);
}

} // namespace tarquil
