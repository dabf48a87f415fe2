// One sounding note: three oscillator groups, envelopes, LFOs, modulation and a filter.

#include "softsynth/voices/voice.h"

#include <algorithm>
#include <cmath>

#include "common/assertion.h"
#include "softsynth/parameters/note_frequency.h"
#include "softsynth/parameters/voice_quantities.h"
#include "softsynth/voices/channel.h"
#include "softsynth/voices/pitch_bend.h"
#include "softsynth/voices/sound_controls.h"

namespace tarquil {

namespace {

constexpr double RANDOM_TO_CYCLES = 1.0 / 2147483648.0;

// A row whose values are all the same.
struct Constant {
    float operator[](uint32_t /*sample*/) const { return value; }

    float value;
};

} // namespace

struct Voice::Grid {
    template <typename Act> void for_each(const Act& act) const {
        if (step == 1) { // by itself, since vectors need a known step
            for (uint32_t t = first; t < size; t++)
                act(t);
        } else {
            for (uint32_t t = first; t < size; t += step)
                act(t);
        }
    }

    uint32_t first;
    uint32_t step;
    uint32_t size;
};

void Voice::note_on(Channel& new_channel, int new_note, int velocity, uint32_t time) {
    start_time = time;
    channel = &new_channel;
    note = new_note;
    fading = false;
    const ControllerArray& controllers = channel->get_controllers();
    for (unsigned c = 0; c < NUM_CONTROLLERS; c++) {
        const Controller& controller = controllers.get_controller(c);
        const float value = controller.get_last_value();
        controller_values_int[c] = controller.get_last_int_value();
        controller_values[c] = value;
        cubed_controller_values[c] = cubed(value);
    }
    velocity_scale = float(velocity) / 127;
    init_modulation();
    const float frequency = note_frequency(float(note));
    init_oscillators();
    init_envelopes(time, velocity);
    init_portamento(frequency);
    init_filter(frequency);
}

void Voice::init_modulation() {
    used_sources = 0;
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++) {
        const ModulationRows rows = modulation_rows(slot);
        const auto source = unsigned(controller_values_int[rows.source]);
        TARQ_ASSERT(source < INFL_END_MARKER);
        modulations[slot] = {.source = source,
                             .multiplies = controller_values_int[rows.amount] == MULTIPLYING_AMOUNT,
                             .amount = controller_values[rows.amount] +
                                       controller_values[rows.fine_amount]};
        used_sources |= 1U << source;
    }
}

void Voice::init_oscillators() {
    is_ring_modulated = controller_values_int[CTRL_OSC1_OSC2_RING_MODULATOR] != 0;
    for (unsigned i = 0; i < NUM_GROUPS; i++) {
        const float base = float(note) + controller_values[CTRL_OSC1_COARSE_TUNE + i] +
                           controller_values[CTRL_OSC1_FINE_TUNE + i];
        const int osc_count = int(controller_values[CTRL_OSC1_MULTI_COUNT + i]);
        TARQ_ASSERT(osc_count >= 1 && osc_count <= MAX_MULTI_OSC_WIDTH);
        TARQ_ASSERT(osc_count % 2 == 1);
        const int half = osc_count / 2;
        const float step =
            half == 0 ? 0.0F : cubed_controller_values[CTRL_OSC1_SPREAD + i] / float(half);
        // One control governs the phases of all three groups.
        const auto randomness = unsigned(controller_values_int[CTRL_OSC1_RANDOMIZE_PHASE]);
        // Copies in random phases add up in power, copies in phase in amplitude.
        group_gains[i] =
            randomness != 0 ? 1.0F / std::sqrt(float(osc_count)) : 1.0F / float(osc_count);
        uint32_t phases[MAX_MULTI_OSC_WIDTH];
        for (int j = 0; j < osc_count; j++) {
            const double random = channel->get_phase_random().next() * RANDOM_TO_CYCLES;
            phases[j] = oscillator_phase(float(random * randomness));
        }
        const CopyTuning tuning = {OscType(controller_values_int[CTRL_OSC1_TYPE + i]),
                                   uint32_t(osc_count), base, step};
        oscillators[i].init(channel->get_copy_tunings().get(channel->get_waves(), tuning), phases);
    }
    for (unsigned k = 0; k < NUM_LFOS; k++)
        lfos[k].init(channel->get_waves(), OscType(controller_values_int[CTRL_LFO1_TYPE + k]), 1.0F,
                     controller_values[CTRL_LFO1_PHASE + k]);
}

void Voice::init_envelopes(uint32_t time, int velocity) {
    for (unsigned i = 0; i < NUM_ENVELOPES; i++) {
        const EnvelopeRows rows = envelope_rows(i);
        const uint32_t attack = envelope_samples(controller_values[rows.attack]);
        const uint32_t decay = envelope_samples(controller_values[rows.decay]);
        const uint32_t release = envelope_samples(controller_values[rows.release]);
        TARQ_ASSERT(attack > 0);
        TARQ_ASSERT(decay > 0);
        TARQ_ASSERT(release > 0);
        const float master_level = i == 0 ? float(velocity) / 127 : 1.0F;
        env_init(&envelopes[i], time, attack, decay, cubed_controller_values[rows.sustain], release,
                 master_level);
    }
}

void Voice::init_portamento(float frequency) {
    portamento_start = channel->get_last_note_frequency() / frequency;
    if (portamento_start < 0.0F)
        portamento_start = 1.0F; // no previous note
    portamento_length = portamento_samples(controller_values[CTRL_PORTAMENTO_TIME]);
    channel->set_last_note_frequency(frequency);
}

void Voice::init_filter(float frequency) {
    const auto type =
        FilterType(controller_values_int[CTRL_FILTER1_TYPE] % FILTER_LADDER_END_MARKER);
    const float key_frequency =
        controller_values_int[CTRL_FILTER1_KEY_FOLLOW] != 0 ? frequency : 0.0F;
    use_ladder = is_ladder_filter(type);
    if (use_ladder)
        ladder_filter.init(type, key_frequency);
    else
        filter.init(get_base_filter_type(type), get_filter_waveshape(type),
                    controller_values_int[CTRL_FILTER1_DEPTH], key_frequency);
}

void Voice::render_signals(VoiceScratch& scratch, uint32_t start, uint32_t size) {
    TARQ_ASSERT(channel);
    const uint32_t active_start = std::max(start, start_time);
    const uint32_t offset = active_start - start;
    render_envelopes(scratch, start, start + size);
    render_lfos(scratch, start, offset);
    render_pitch_buffer(scratch.pitch, start, active_start);
    for (unsigned i = 0; i < NUM_GROUPS; i++)
        render_group(scratch, i, offset);
    mix_groups(scratch, start, offset);
    render_filter_controls(scratch, start);
    possibly_influence(signals.amplitude, {0, 1, size}, scratch, AMPLITUDE_SLOT, velocity_scale);
}

void Voice::add_output(MonoBuffer& out, uint32_t start) {
    float* sum = out.get_first_sample_ptr();
    const uint32_t size = out.get_buf_size();
    for (uint32_t i = 0; i < size; i++)
        sum[i] += signals.signal[i] * signals.amplitude[i];
    if (env_get_done_time(&envelopes[0]) <= start + size)
        free();
}

void Voice::render_envelopes(VoiceScratch& scratch, uint32_t start, uint32_t end) {
    env_render(&envelopes[0], signals.amplitude, start, end);
    scratch.signals[INFL_ENV1] = signals.amplitude;
    for (unsigned i = 1; i < NUM_ENVELOPES; i++) {
        if (!is_in_use(INFL_ENV1 + i))
            continue;
        float* row = scratch.sources[INFL_ENV1 + i].get_first_sample_ptr();
        env_render(&envelopes[i], row, start, end);
        scratch.signals[INFL_ENV1 + i] = row;
    }
}

void Voice::render_lfos(VoiceScratch& scratch, uint32_t start, uint32_t offset) {
    for (unsigned k = 0; k < NUM_LFOS; k++) {
        if (!is_in_use(INFL_LFO1 + k))
            continue;
        MonoBuffer& speed = scratch.pitch;
        if (scratch.tempo != nullptr)
            get_controls().render_controls(CTRL_LFO1_SPEED + k, speed, start, offset,
                                           scratch.tempo->lfo_hz(k));
        else
            get_controls().render_controls(CTRL_LFO1_SPEED + k, speed, start, offset, true);
        // What lies before the note is another voice's leftover.
        MonoBuffer& out = scratch.sources[INFL_LFO1 + k];
        std::fill_n(out.get_first_sample_ptr(), offset, 0.0F);
        if (is_read_at_controls_only(INFL_LFO1 + k, offset))
            lfos[k].render_controls(out, speed, offset);
        else
            lfos[k].render_interpolated(out, speed, offset);
        scratch.signals[INFL_LFO1 + k] = out.get_first_sample_ptr();
    }
}

bool Voice::is_read_at_controls_only(unsigned source, uint32_t offset) const {
    // Pitch is read every CONTROL_PERIOD samples from the note's first on, filter controls from the
    // block's first on.
    const unsigned amplitude_source = modulations[AMPLITUDE_SLOT].source;
    return offset % CONTROL_PERIOD == 0 && amplitude_source != source &&
           amplitude_source != INFL_RESONANCE;
}

void Voice::render_group(VoiceScratch& scratch, unsigned index, uint32_t offset) {
    OscillatorGroup& group = oscillators[index];
    const unsigned slot = FIRST_PITCH_SLOT + index;
    const unsigned source = modulations[slot].source;
    TARQ_ASSERT(source < INFL_OSC1 + index);
    if (group.is_off()) {
        scratch.signals[INFL_OSC1 + index] = scratch.zeros;
        return;
    }
    MonoBuffer& out = scratch.sources[INFL_OSC1 + index];
    const MonoBuffer* pitch = &scratch.pitch;
    if (source != INFL_NONE) {
        const Grid grid = {offset, CONTROL_PERIOD, out.get_buf_size()};
        const float* unmodulated = scratch.pitch.get_first_sample_ptr();
        float* modulated = scratch.modulated_pitch.get_first_sample_ptr();
        grid.for_each([&](uint32_t t) { modulated[t] = unmodulated[t]; });
        possibly_influence(modulated, grid, scratch, slot, 1.0F);
        pitch = &scratch.modulated_pitch;
    }
    std::fill_n(out.get_first_sample_ptr(), offset, 0.0F);
    group.render(out, *pitch, offset);
    if (group.get_count() > 1)
        Buffer::scale(out, group_gains[index], out);
    scratch.signals[INFL_OSC1 + index] = out.get_first_sample_ptr();
}

template <typename Volume, typename Mix>
void Voice::mix_groups_with(const VoiceScratch& scratch, const Volume& volume, const Mix& mix) {
    const float* osc1 = scratch.signals[INFL_OSC1];
    const float* osc2 = scratch.signals[INFL_OSC2];
    const float* osc3 = scratch.signals[INFL_OSC3];
    const uint32_t size = scratch.volume.get_buf_size();
    float* out = signals.signal;
    if (is_ring_modulated) {
        for (uint32_t i = 0; i < size; i++)
            out[i] = osc1[i] * osc2[i] + volume[i] * osc3[i];
    } else {
        for (uint32_t i = 0; i < size; i++)
            out[i] = osc1[i] + (osc2[i] - osc1[i]) * mix[i] + volume[i] * osc3[i];
    }
}

void Voice::mix_groups(VoiceScratch& scratch, uint32_t start, uint32_t offset) {
    const SoundControls controls = get_controls();
    if (controls.are_still()) {
        mix_groups_with(scratch, Constant{controls.last_cubed_value(CTRL_OSC3_VOLUME)},
                        Constant{controls.last_value(CTRL_OSC1_OSC2_MIX)});
    } else {
        controls.render(CTRL_OSC3_VOLUME, scratch.volume, start, true);
        controls.render(CTRL_OSC1_OSC2_MIX, scratch.mix, start, false);
        mix_groups_with(scratch, scratch.volume.get_first_sample_ptr(),
                        scratch.mix.get_first_sample_ptr());
    }
    std::fill_n(signals.signal, offset, 0.0F);
}

void Voice::render_filter_controls(VoiceScratch& scratch, uint32_t start) {
    const SoundControls controls = get_controls();
    const uint32_t size = scratch.cutoff.get_buf_size();
    const Grid grid = {0, CONTROL_PERIOD, size};

    MonoBuffer& resonance = scratch.sources[INFL_RESONANCE];
    TARQ_ASSERT(modulations[RESONANCE_SLOT].source < INFL_RESONANCE);
    if (modulations[AMPLITUDE_SLOT].source == INFL_RESONANCE) {
        controls.render(CTRL_FILTER1_RESONANCE, resonance, start, false);
        possibly_influence(resonance.get_first_sample_ptr(), {0, 1, size}, scratch, RESONANCE_SLOT,
                           1.0F);
    } else {
        controls.render_controls(CTRL_FILTER1_RESONANCE, resonance, start, 0, false);
        possibly_influence(resonance.get_first_sample_ptr(), grid, scratch, RESONANCE_SLOT, 1.0F);
    }
    scratch.signals[INFL_RESONANCE] = resonance.get_first_sample_ptr();

    controls.render_controls(CTRL_FILTER1_CUTOFF, scratch.cutoff, start, 0, false);
    for (unsigned i = 0; i < NUM_CUTOFF_SLOTS; i++)
        possibly_influence(scratch.cutoff.get_first_sample_ptr(), grid, scratch,
                           FIRST_CUTOFF_SLOT + i, 1.0F);
    grid.for_each([&](uint32_t t) {
        signals.cutoff[t / CONTROL_PERIOD] = scratch.cutoff.get_first_sample_ptr()[t];
        signals.resonance[t / CONTROL_PERIOD] = resonance.get_first_sample_ptr()[t];
    });
}

SoundControls Voice::get_controls() const {
    return channel->get_sound_controls(fading);
}

void Voice::influence(float* dest, const Grid& grid, const VoiceScratch& scratch,
                      const Modulation& modulation, float scale) {
    const float* signal = scratch.signals[modulation.source];
    if (modulation.multiplies) {
        grid.for_each([&](uint32_t t) { dest[t] *= signal[t]; });
    } else {
        const float factor = modulation.amount * scale;
        grid.for_each([&](uint32_t t) { dest[t] += signal[t] * factor; });
    }
}

void Voice::render_pitch_buffer(MonoBuffer& buf, uint32_t start, uint32_t active_start) const {
    TARQ_ASSERT(pitch_bend_mulfac_table[0] != 0.0f);
    float* ratios = buf.get_first_sample_ptr();
    const uint32_t end = start + buf.get_buf_size();
    const uint32_t length = portamento_length;
    const uint32_t stop = std::min(start_time + length, end);
    uint32_t t = active_start;
    if (length > 0) {
        for (; t < stop; t += CONTROL_PERIOD)
            ratios[t - start] = float(t - start_time) * (1.0F - portamento_start) / float(length) +
                                portamento_start;
    }
    for (; t < end; t += CONTROL_PERIOD)
        ratios[t - start] = 1.0F;
    add_pitch_bend(ratios, start, active_start, end);
}

void Voice::add_pitch_bend(float* ratios, uint32_t start, uint32_t active_start,
                           uint32_t end) const {
    const ControllerArray& controllers = channel->get_controllers();
    const Controller& pb_msb = controllers.get_controller(CTRL_PITCH_BEND_MSB);
    const Controller& pb_lsb = controllers.get_controller(CTRL_PITCH_BEND_LSB);
    TARQ_ASSERT(pb_msb.size() == pb_lsb.size());
    const SoundControls controls = get_controls();
    if (controls.are_still()) {
        const float bend = pitch_bend_mulfac_table[pb_msb.get_last_int_value() * 128 +
                                                   pb_lsb.get_last_int_value()];
        for (uint32_t t = active_start; t < end; t += CONTROL_PERIOD)
            ratios[t - start] *= bend;
        return;
    }
    uint32_t evIdx = 0;
    for (uint32_t t = active_start; t < end; t += CONTROL_PERIOD) {
        while (evIdx < pb_msb.size() && pb_msb.event(evIdx).time <= t)
            evIdx++;
        TARQ_ASSERT(pb_msb.event(evIdx - 1).time == pb_lsb.event(evIdx - 1).time);
        const bool is_frozen = controls.is_frozen_at(t);
        const int msb = is_frozen ? controls.last_int_value(CTRL_PITCH_BEND_MSB)
                                  : pb_msb.event(evIdx - 1).value;
        const int lsb = is_frozen ? controls.last_int_value(CTRL_PITCH_BEND_LSB)
                                  : pb_lsb.event(evIdx - 1).value;
        TARQ_ASSERT(msb < 128);
        TARQ_ASSERT(lsb < 128);
        ratios[t - start] *= pitch_bend_mulfac_table[msb * 128 + lsb];
    }
}

void Voice::notify_note_off(uint32_t time) {
    for (Envelope& envelope : envelopes)
        env_set_release_time(&envelope, time);
}

void Voice::note_cut(uint32_t time) {
    env_set_cut_time(&envelopes[0], time);
}

uint32_t Voice::get_cost() const {
    constexpr uint32_t PLAIN = 12;
    constexpr uint32_t LADDER = 60; // of several in lanes
    uint32_t cost = use_ladder ? PLAIN + LADDER : PLAIN;
    for (const OscillatorGroup& group : oscillators)
        cost += group.is_off() ? 0U : uint32_t(group.get_count());
    return cost;
}

bool Voice::is_cut() const {
    return envelopes[0].cut_time < TIME_NEVER;
}

void Voice::free() {
    channel->free_voice(*this);
    channel = nullptr;
}

void Voice::move_clock_back(uint32_t frames, uint32_t new_start_time) {
    start_time = new_start_time;
    for (Envelope& envelope : envelopes)
        env_move_clock_back(&envelope, frames);
}

} // namespace tarquil
