// What follows a channel's voices: insert effects, filters, volume, pan and the stereo effect.

#include "softsynth/voices/channel_chain.h"

#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

void render_stereo(const SoundControls& controls, uint32_t start, StereoEffect& stereo_effect,
                   DelayLine::Part part, ChannelScratch& scratch) {
    StereoBuffer& mix = scratch.mix;
    controls.render(CTRL_MAIN_VOLUME, scratch.volume, start, true);
    controls.render_sqr(CTRL_PANNING, scratch.left_gain, scratch.right_gain, start);
    mix.make_from_mono(scratch.signal, scratch.volume, scratch.left_gain, scratch.right_gain);
    const auto type = StereoEffect::effect_type(controls.last_int_value(CTRL_CHANFX2_TYPE));
    float* samples = mix.get_first_left_sample_ptr();
    // What chorus and flanger keep is gone in a moment.
    if (type == StereoEffect::STEREO_EFFECT_DELAY)
        scrub_for_echo(samples, 2 * mix.get_buf_size());
    else
        scrub_non_finite(samples, 2 * mix.get_buf_size());
    const auto parameter = [&](unsigned index) {
        return controls.last_int_value(STEREO_EFFECT_ROWS.parameter(index));
    };
    stereo_effect.render(type, mix, mix, parameter(0), parameter(1), parameter(2), parameter(3),
                         parameter(4), controls.last_cubed_value(CTRL_CHANFX2_WET),
                         scratch.stereo_effect, part);
}

} // namespace

void ChannelChain::render(const SoundControls& controls, uint32_t start,
                          StereoEffect& stereo_effect, DelayLine::Part part,
                          ChannelScratch& scratch) {
    MonoBuffer& signal = scratch.signal;
    scrub_non_finite(signal.get_first_sample_ptr(), signal.get_buf_size());
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++)
        render_insert_effect(insert_effects[i], mono_effect_rows(i), controls, start, scratch);
    render_filters(controls, signal);
    render_stereo(controls, start, stereo_effect, part, scratch);
}

void ChannelChain::render_insert_effect(MonoEffect& effect, const EffectRows& rows,
                                        const SoundControls& controls, uint32_t start,
                                        ChannelScratch& scratch) {
    const auto type = MonoEffect::effect_type(controls.last_int_value(rows.type));
    if (type == MonoEffect::MONO_EFFECT_FILTER) {
        controls.render_controls(rows.parameter(0), scratch.cutoff, start, 0, false);
        controls.render_controls(rows.parameter(1), scratch.resonance, start, 0, false);
    }
    const auto parameter = [&](unsigned index) {
        return controls.last_int_value(rows.parameter(index));
    };
    effect.render(type, scratch.signal, parameter(0), parameter(1), parameter(2), parameter(3),
                  parameter(4), scratch.cutoff, scratch.resonance);
}

void ChannelChain::render_filters(const SoundControls& controls, MonoBuffer& signal) {
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++) {
        Filter& filter = filters[i];
        const FilterRows rows = channel_filter_rows(i);
        const auto type = FilterType(controls.last_int_value(rows.type));
        if (type != filter.get_type())
            filter.init(type, 0, 1, 0.0F);
        if (type == FILTER_NONE)
            continue;
        filter.set_octaves_cutoff(controls.last_value(rows.cutoff));
        filter.set_resonance(controls.last_value(rows.resonance));
        filter.set_dbgain_normalized(controls.last_value(rows.gain));
        filter.update();
        filter.render_chunk(signal.get_first_sample_ptr(), signal.get_buf_size());
    }
}

} // namespace tarquil
