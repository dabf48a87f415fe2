// The engine's block: channels into buses, then the master chain in its fixed order.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>

#include "softsynth/core/core.h"
#include "softsynth/parameters/filter_quantities.h"
#include "softsynth/parameters/master_quantities.h"
#include "softsynth/signal/fade_out.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr int MAIN_BUS = 0;
constexpr int REVERB_BUS = 1;
constexpr int DELAY_BUS = 2;

constexpr float BUTTERWORTH_Q = 0.70710677F; // 1 / sqrt(2)

void scrub(StereoBuffer& buffer) {
    scrub_non_finite(buffer.get_first_left_sample_ptr(), 2 * buffer.get_buf_size());
}

} // namespace

void Tarquil::render(float* pcm_out, uint32_t num_samples, uint32_t time) {
    render_channels(num_samples, time);
    render_aux_returns(time);
    render_global_filters();
    render_retrigger(time);
    render_pre_gain();
    render_compressor();
    if (echoes_fade && int32_t(time + num_samples - echo_fade_start) >= int32_t(FadeOut::LENGTH))
        end_echo_fade();
    std::memcpy(pcm_out, scratch.buses[MAIN_BUS].get_first_left_sample_ptr(),
                size_t(2) * num_samples * sizeof(float));
}

void Tarquil::end_echo_fade() {
    echoes_fade = false;
    reverb.mute();
    delay.reset();
    retrigger.reset();
}

void Tarquil::render_channels(uint32_t num_samples, uint32_t time) {
    scratch.init(num_samples);
    Voice* active[VoicePool::NUM_VOICES];
    uint32_t count = 0;
    active_voices().for_each([&](uint32_t place) { active[count++] = &voice_pool.at(place); });
    const std::span<Voice* const> voices = {active, count};
    const bool is_shared_out = parallel != nullptr && parallel->is_worth_it(voices, num_samples);
    if (is_shared_out) {
        parallel->render_voices(voices, time, num_samples);
        parallel->render_channels(channels, time, num_samples);
    } else if (count > 0) {
        voice_renderer.render(voices, time, num_samples);
    }
    for (int c = 0; c < NUM_CHANNELS; c++) {
        if (!is_shared_out)
            channels[c].render(num_samples, time, scratch.channel, scratch.channel_output);
        const ChannelOutput& output =
            is_shared_out ? parallel->get_output(c) : scratch.channel_output;
        output.add_to(scratch.buses, channel_taps == nullptr ? nullptr : &channel_taps[c]);
        channels[c].get_controllers().reset();
    }
}

VoiceSet Tarquil::active_voices() const {
    VoiceSet active;
    for (const Channel& channel : channels)
        active |= channel.get_voices();
    return active;
}

int Tarquil::num_voices() const {
    return active_voices().count();
}

void Tarquil::render_aux_returns(uint32_t time) {
    for (const int bus : {REVERB_BUS, DELAY_BUS})
        scrub_for_echo(scratch.buses[bus].get_first_left_sample_ptr(),
                       2 * scratch.buses[bus].get_buf_size());

    reverb.setroomsize(global(CTRL_REVERB_ROOMSIZE).get_last_value());
    reverb.setdamp(global(CTRL_REVERB_DAMP).get_last_value());
    reverb.setwidth(global(CTRL_REVERB_WIDTH).get_last_value());
    reverb.setwet(global(CTRL_REVERB_WET).get_last_cubed_value());
    reverb.update();
    StereoBuffer& sum = scratch.aux_return;
    reverb.processmix(scratch.buses[REVERB_BUS].get_first_left_sample_ptr(),
                      sum.get_first_left_sample_ptr(), long(sum.get_buf_size()));

    const auto byte = [this](unsigned number) { return global(number).get_last_int_value(); };
    delay.render(StereoEffect::STEREO_EFFECT_DELAY, scratch.buses[DELAY_BUS], sum,
                 byte(CTRL_DELAY_LEFT_TIME), byte(CTRL_DELAY_RIGHT_TIME), byte(CTRL_DELAY_FEEDBACK),
                 0, 0, 1.0F, scratch.channel.stereo_effect);

    if (echoes_fade)
        FadeOut::apply(sum.get_first_left_sample_ptr(), sum.get_buf_size(),
                       int32_t(time - echo_fade_start));
    aux_filter.render(sum.get_first_left_sample_ptr(), sum.get_buf_size(),
                      global(CTRL_AUX_CUTOFF).get_last_cubed_value() * RADIANS_PER_HZ,
                      BUTTERWORTH_Q, 0.0F);
    scratch.buses[MAIN_BUS] += sum;
}

void Tarquil::render_global_filters() {
    StereoBuffer& bus = scratch.buses[MAIN_BUS];
    for (unsigned i = 0; i < NUM_GLOBAL_FILTERS; i++) {
        StereoFilter& filter = global_filters[i];
        const FilterRows rows = global_filter_rows(i);
        const auto setting = [&](unsigned number) { return global(number).get_last_value(); };
        const auto type = FilterType(global(rows.type).get_last_int_value());
        if (type != filter.get_type())
            filter.init(type, 1);
        if (type == FILTER_NONE)
            continue;
        filter.render(bus.get_first_left_sample_ptr(), bus.get_buf_size(),
                      cutoff_omega(setting(rows.cutoff)), setting(rows.resonance),
                      setting(rows.gain));
    }
}

void Tarquil::render_retrigger(uint32_t time) {
    const Controller& speedup = global(CTRL_RETRIGGER_SPEEDUP);
    if (!speedup.has_multiple_values() && speedup.get_last_value() == 0.0F) {
        retrigger.leave_grid();
        return;
    }
    global(CTRL_RETRIGGER_BPM).render(scratch.retrigger_bpm, time, false);
    speedup.render(scratch.retrigger_speedup, time, false);
    global(CTRL_RETRIGGER_WET_LEVEL).render(scratch.retrigger_wet, time, false);
    StereoBuffer& bus = scratch.buses[MAIN_BUS];
    scrub(bus);
    const auto fade_age = int32_t(time - echo_fade_start);
    BeatGrid grid{tempo, 0.0};
    if (tempo_values.is_on())
        grid.beat = tempo_values.beat_quarters(global(CTRL_RETRIGGER_BPM).get_last_int_value(),
                                               double(RetriggerBox::LONGEST_BEAT));
    else
        retrigger.leave_grid();
    retrigger.render(bus, scratch.retrigger_bpm, scratch.retrigger_speedup, scratch.retrigger_wet,
                     echoes_fade ? &fade_age : nullptr, tempo_values.is_on() ? &grid : nullptr);
}

void Tarquil::render_pre_gain() {
    const float gain = master_pre_gain(global(CTRL_FCMPR_PRE_GAIN).get_last_value());
    if (gain != 1.0F) // which would change nothing
        Buffer::scale(scratch.buses[MAIN_BUS], gain, scratch.buses[MAIN_BUS]);
}

void Tarquil::render_compressor() {
    const auto setting = [this](unsigned number) { return global(number).get_last_cubed_value(); };
    float crossovers[MC_N_BANDS - 1];
    std::transform(std::begin(CROSSOVER_ROWS), std::end(CROSSOVER_ROWS), crossovers, setting);
    float thresholds[MC_N_BANDS];
    float ratios[MC_N_BANDS];
    float attacks[MC_N_BANDS];
    float releases[MC_N_BANDS];
    float makeups[MC_N_BANDS];
    for (unsigned b = 0; b < MC_N_BANDS; b++) {
        const CompressorBandRows rows = compressor_band_rows(b);
        thresholds[b] = setting(rows.threshold);
        ratios[b] = setting(rows.ratio);
        attacks[b] = setting(rows.attack);
        releases[b] = setting(rows.release);
        makeups[b] = is_band_muted(b) ? 0.0F : setting(rows.makeup);
    }
    StereoBuffer& bus = scratch.buses[MAIN_BUS];
    scrub(bus);
    compressor.process(bus, crossovers, thresholds, ratios, attacks, releases, makeups);
}

} // namespace tarquil
