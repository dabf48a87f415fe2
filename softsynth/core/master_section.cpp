// What follows the channels: the master chain in its fixed order.

#include "softsynth/core/master_section.h"

#include <algorithm>
#include <cstring>

#include "common/assertion.h"
#include "softsynth/kernels/biquad_series.h"
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

void fill(MonoBuffer& buffer, uint32_t size, float value) {
    buffer.init(size);
    std::fill_n(buffer.get_first_sample_ptr(), size, value);
}

} // namespace

void clear(Buses& buses, uint32_t size) {
    for (StereoBuffer& bus : buses) {
        bus.init(size);
        bus.nullify();
    }
}

MasterSection::MasterSection(const WaveformStore& waves) : delay_scratch(waves) {
    aux_filter.init(FILTER_HIGHPASS);
    compressor.reset();
    retrigger.reset();
}

void MasterSection::follow(const Tempo& now) {
    tempo = now;
    tempo_values.follow(now.samples_per_quarter);
    delay_scratch.tempo = tempo_values.is_on() ? &tempo_values : nullptr;
}

void MasterSection::set_band_muted(unsigned band, bool muted) {
    TARQ_ASSERT(band < MC_N_BANDS);
    band_muted[band].store(muted, std::memory_order_relaxed);
}

bool MasterSection::is_band_muted(unsigned band) const {
    TARQ_ASSERT(band < MC_N_BANDS);
    return band_muted[band].load(std::memory_order_relaxed);
}

void MasterSection::render(const MasterSettings& settings, uint32_t time,
                           std::optional<uint32_t> silence, float* pcm_out) {
    const uint32_t num_samples = buses[MAIN_BUS].get_buf_size();
    if (silence && !echoes_fade) {
        echoes_fade = true;
        echo_fade_start = *silence;
    }
    render_aux_returns(settings, time);
    render_global_filters(settings);
    render_retrigger(settings.retrigger, time);
    render_pre_gain(settings.pre_gain);
    render_compressor(settings.compressor);
    if (echoes_fade && int32_t(time + num_samples - echo_fade_start) >= int32_t(FadeOut::LENGTH))
        end_echo_fade();
    std::memcpy(pcm_out, buses[MAIN_BUS].get_first_left_sample_ptr(),
                size_t(2) * num_samples * sizeof(float));
    scrub_non_finite(pcm_out, 2 * num_samples);
    for (uint32_t i = 0; i < 2 * num_samples; i++)
        pcm_out[i] = std::clamp(pcm_out[i], -output_bound, output_bound);
}

void MasterSection::end_echo_fade() {
    echoes_fade = false;
    reverb.mute();
    delay.reset();
    retrigger.reset();
}

void MasterSection::render_aux_returns(const MasterSettings& settings, uint32_t time) {
    for (const int bus : {REVERB_BUS, DELAY_BUS})
        scrub_for_echo(buses[bus].get_first_left_sample_ptr(), 2 * buses[bus].get_buf_size());

    reverb.setroomsize(settings.reverb.room_size);
    reverb.setdamp(settings.reverb.damp);
    reverb.setwidth(settings.reverb.width);
    reverb.setwet(settings.reverb.wet);
    reverb.update();
    StereoBuffer& sum = aux_return;
    sum.init(buses[MAIN_BUS].get_buf_size());
    sum.nullify();
    reverb.processmix(buses[REVERB_BUS].get_first_left_sample_ptr(),
                      sum.get_first_left_sample_ptr(), long(sum.get_buf_size()));

    const int* p = settings.delay_parameters;
    delay.render(StereoEffect::STEREO_EFFECT_DELAY, buses[DELAY_BUS], sum, p[0], p[1], p[2], 0, 0,
                 1.0F, delay_scratch);
    if (echoes_fade)
        FadeOut::apply(sum.get_first_left_sample_ptr(), sum.get_buf_size(),
                       int32_t(time - echo_fade_start));

    aux_filter.set(settings.aux_omega, BUTTERWORTH_Q, 0.0F);
    StereoFilter* const high_pass = &aux_filter;
    StereoFilter::render({&high_pass, 1}, sum.get_first_left_sample_ptr(), sum.get_buf_size());
    buses[MAIN_BUS] += sum;
}

void MasterSection::render_global_filters(const MasterSettings& settings) {
    static_assert(NUM_GLOBAL_FILTERS <= BiquadSeries::MAX_SECTIONS);
    StereoFilter* used[NUM_GLOBAL_FILTERS];
    size_t num_used = 0;
    for (unsigned i = 0; i < NUM_GLOBAL_FILTERS; i++) {
        StereoFilter& filter = global_filters[i];
        const MasterSettings::Equaliser& equaliser = settings.filters[i];
        if (equaliser.type != filter.get_type())
            filter.init(equaliser.type);
        if (equaliser.type == FILTER_NONE)
            continue;
        filter.set(equaliser.omega, equaliser.resonance, equaliser.gain);
        used[num_used++] = &filter;
    }
    StereoBuffer& bus = buses[MAIN_BUS];
    if (num_used > 0)
        StereoFilter::render({used, num_used}, bus.get_first_left_sample_ptr(), bus.get_buf_size());
}

void MasterSection::render_retrigger(const MasterSettings::Retrigger& settings, uint32_t time) {
    if (settings.speedup == 0.0F) {
        retrigger.leave_grid();
        return;
    }
    StereoBuffer& bus = buses[MAIN_BUS];
    fill(retrigger_bpm, bus.get_buf_size(), settings.bpm);
    fill(retrigger_speedup, bus.get_buf_size(), settings.speedup);
    fill(retrigger_wet, bus.get_buf_size(), settings.wet);
    scrub(bus);
    const auto fade_age = int32_t(time - echo_fade_start);
    BeatGrid grid{tempo, 0.0};
    if (tempo_values.is_on())
        grid.beat =
            tempo_values.beat_quarters(settings.bpm_byte, double(RetriggerBox::LONGEST_BEAT));
    else
        retrigger.leave_grid();
    retrigger.render(bus, retrigger_bpm, retrigger_speedup, retrigger_wet,
                     echoes_fade ? &fade_age : nullptr, tempo_values.is_on() ? &grid : nullptr);
}

void MasterSection::render_pre_gain(float gain) {
    if (gain != 1.0F) // which would change nothing
        Buffer::scale(buses[MAIN_BUS], gain, buses[MAIN_BUS]);
}

void MasterSection::render_compressor(const MasterSettings::Compressor& settings) {
    float makeups[MC_N_BANDS];
    for (unsigned b = 0; b < MC_N_BANDS; b++)
        makeups[b] = is_band_muted(b) ? 0.0F : settings.makeups[b];
    StereoBuffer& bus = buses[MAIN_BUS];
    scrub(bus);
    compressor.process(bus, settings.crossovers, settings.thresholds, settings.ratios,
                       settings.attacks, settings.releases, makeups);
}

} // namespace tarquil
