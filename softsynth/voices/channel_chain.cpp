// What follows a channel's voices: insert effects, filters, volume, pan and the stereo effect.

#include "softsynth/voices/channel_chain.h"

#include "softsynth/kernels/biquad_series.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

void make_stereo(const ChainSettings& settings, bool is_still, ChannelScratch& scratch,
                 StereoBuffer& mix) {
    if (is_still)
        mix.make_from_mono(scratch.signal, settings.volume, settings.left_gain,
                           settings.right_gain);
    else
        mix.make_from_mono(scratch.signal, scratch.volume, scratch.left_gain, scratch.right_gain);
}

void render_stereo(const ChainSettings& settings, StereoEffect& stereo_effect, DelayLine::Part part,
                   ChannelScratch& scratch, StereoBuffer& mix) {
    float* samples = mix.get_first_left_sample_ptr();
    // What chorus and flanger keep is gone in a moment.
    if (settings.stereo_type == StereoEffect::STEREO_EFFECT_DELAY)
        scrub_for_echo(samples, 2 * mix.get_buf_size());
    else
        scrub_non_finite(samples, 2 * mix.get_buf_size());
    const int* p = settings.stereo_parameters;
    stereo_effect.render(settings.stereo_type, mix, mix, p[0], p[1], p[2], p[3], p[4],
                         settings.stereo_wet, scratch.stereo_effect, part);
}

} // namespace

void ChannelChain::render_rows(const ChainSettings& settings, const SoundControls& controls,
                               uint32_t start, ChannelScratch& scratch) {
    if (!controls.are_still()) {
        controls.render(CTRL_MAIN_VOLUME, scratch.volume, start, true);
        controls.render_sqr(CTRL_PANNING, scratch.left_gain, scratch.right_gain, start);
    }
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        if (settings.inserts[i].type != MonoEffect::MONO_EFFECT_FILTER)
            continue;
        const EffectRows rows = mono_effect_rows(i);
        controls.render_controls(rows.parameter(0), scratch.cutoff[i], start, 0, false);
        controls.render_controls(rows.parameter(1), scratch.resonance[i], start, 0, false);
    }
}

void ChannelChain::render(const ChainSettings& settings, bool is_still, StereoEffect& stereo_effect,
                          DelayLine::Part part, ChannelScratch& scratch, StereoBuffer& mix) {
    MonoBuffer& signal = scratch.signal;
    scrub_non_finite(signal.get_first_sample_ptr(), signal.get_buf_size());
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        const ChainSettings::Insert& insert = settings.inserts[i];
        const int* p = insert.parameters;
        insert_effects[i].render(insert.type, signal, p[0], p[1], p[2], p[3], p[4],
                                 scratch.cutoff[i], scratch.resonance[i]);
    }
    render_filters(settings, signal);
    make_stereo(settings, is_still, scratch, mix);
    render_stereo(settings, stereo_effect, part, scratch, mix);
}

void ChannelChain::render_filters(const ChainSettings& settings, MonoBuffer& signal) {
    static_assert(NUM_CHANNEL_FILTERS <= BiquadSeries::MAX_SECTIONS);
    Filter* used[NUM_CHANNEL_FILTERS];
    size_t num_used = 0;
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++) {
        Filter& filter = filters[i];
        const ChainSettings::Equaliser& equaliser = settings.filters[i];
        if (equaliser.type != filter.get_type())
            filter.init(equaliser.type, 0, 1, 0.0F);
        if (equaliser.type == FILTER_NONE)
            continue;
        filter.set_octaves_cutoff(equaliser.cutoff);
        filter.set_resonance(equaliser.resonance);
        filter.set_dbgain_normalized(equaliser.gain);
        filter.update();
        used[num_used++] = &filter;
    }
    Filter::render_series({used, num_used}, signal.get_first_sample_ptr(), signal.get_buf_size());
}

} // namespace tarquil
