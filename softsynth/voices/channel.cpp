// One MIDI channel: its controllers, its notes, and its chain of effects and filters.

#include "softsynth/voices/channel.h"

#include "common/assertion.h"
#include "softsynth/parameters/master_quantities.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

// A channel without a voice for this long is silent and is not rendered: two seconds.
constexpr int SILENCE_AFTER = 2 * SAMPLE_RATE;

// Where a fresh channel's last sound lies, in samples before time 0, so that it counts as silent.
constexpr uint32_t FRESH_SILENCE = 4 * SAMPLE_RATE;

} // namespace

Channel::Channel() : last_render_time(0U - FRESH_SILENCE) {}

void Channel::attach(VoicePool& shared_pool, PhaseRandom& shared_random,
                     const WaveformStore& shared_waves, TimelineMemory& timelines) {
    pool = &shared_pool;
    phase_random = &shared_random;
    waves = &shared_waves;
    controllers.use_memory(timelines);
}

void Channel::note_on(uint32_t time, int midi_pitch, int velocity) {
    TARQ_ASSERT(midi_pitch >= 0 && midi_pitch <= 127);
    TARQ_ASSERT(velocity > 0);
    TARQ_ASSERT(velocity <= 127);
    TARQ_ASSERT(active_voices[midi_pitch] == NULL); // NOLINT(modernize-use-nullptr)
    const int max_voices = last_int(CTRL_CHAN_MAX_VOICES);
    TARQ_ASSERT(used_voices >= 0);
    if (used_voices >= max_voices) {
        Voice* oldest = pool->find_oldest_on_channel(*this);
        if (oldest != nullptr)
            oldest->note_cut(time);
    }
    Voice* voice = pool->alloc();
    if (voice == nullptr)
        return;
    voice->note_on(*this, midi_pitch, velocity, time);
    active_voices[midi_pitch] = voice;
    used_voices++;
}

void Channel::note_off(uint32_t time, int midi_pitch) {
    TARQ_ASSERT(midi_pitch >= 0 && midi_pitch <= 127);
    if (active_voices[midi_pitch] == nullptr)
        return;
    active_voices[midi_pitch]->notify_note_off(time);
    active_voices[midi_pitch] = nullptr;
}

void Channel::free_voice(const Voice& v) {
    TARQ_ASSERT(v.belongs_to_channel(*this));
    // A stolen note's note-off must not release the note that gets its voice next.
    if (active_voices[v.get_note()] == &v)
        active_voices[v.get_note()] = nullptr;
    used_voices--;
    TARQ_ASSERT(used_voices >= 0);
}

void Channel::move_clock_back(uint32_t frames, uint32_t now) {
    controllers.move_clock_back(frames);
    // A silence is never longer than what keeps the difference of two times in 31 bits.
    if (int32_t(now - last_render_time) > int32_t(FRESH_SILENCE))
        last_render_time = now - FRESH_SILENCE;
    last_render_time -= frames;
}

int Channel::last_int(unsigned controller) const {
    return controllers.get_controller(controller).get_last_int_value();
}

void Channel::render(StereoBuffer* outputs, uint32_t start, ChannelScratch& scratch,
                     StereoBuffer* tap) {
    const uint32_t size = outputs[0].get_buf_size();
    if (tap != nullptr) {
        tap->init(size);
        tap->nullify();
    }
    if (used_voices == 0 && is_silent(start))
        return;
    scratch.init(size);
    MonoBuffer& signal = scratch.signal;
    render_voices(signal, start);
    if (is_silent(start))
        return;
    scrub_non_finite(signal.get_first_sample_ptr(), size);
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++)
        render_insert_effect(insert_effects[i], mono_effect_rows(i), start, scratch);
    render_filters(signal);
    render_stereo(start, scratch);
    send(scratch.mix, outputs);
    if (tap != nullptr)
        Buffer::copy(scratch.mix, *tap);
}

bool Channel::is_silent(uint32_t start) const {
    return int32_t(start - last_render_time) > SILENCE_AFTER;
}

void Channel::render_voices(MonoBuffer& signal, uint32_t start) {
    signal.nullify();
    for (Voice& voice : *pool) {
        if (voice.belongs_to_channel(*this)) {
            voice.add_output(signal, start);
            last_render_time = start + signal.get_buf_size();
        }
    }
}

void Channel::render_insert_effect(MonoEffect& effect, const EffectRows& rows, uint32_t start,
                                   ChannelScratch& scratch) {
    const auto type = MonoEffect::effect_type(last_int(rows.type));
    if (type == MonoEffect::MONO_EFFECT_FILTER) {
        controllers.get_controller(rows.parameter(0))
            .render_controls(scratch.cutoff, start, 0, false);
        controllers.get_controller(rows.parameter(1))
            .render_controls(scratch.resonance, start, 0, false);
    }
    const auto parameter = [&](unsigned index) { return last_int(rows.parameter(index)); };
    effect.render(type, scratch.signal, parameter(0), parameter(1), parameter(2), parameter(3),
                  parameter(4), scratch.cutoff, scratch.resonance);
}

void Channel::render_filters(MonoBuffer& signal) {
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++) {
        Filter& filter = filters[i];
        const FilterRows rows = channel_filter_rows(i);
        const auto setting = [&](unsigned number) {
            return controllers.get_controller(number).get_last_value();
        };
        const auto type = FilterType(last_int(rows.type));
        if (type != filter.get_type())
            filter.init(type, 0, 1, 0.0F);
        if (type == FILTER_NONE)
            continue;
        filter.set_octaves_cutoff(setting(rows.cutoff));
        filter.set_resonance(setting(rows.resonance));
        filter.set_dbgain_normalized(setting(rows.gain));
        filter.update();
        filter.render_chunk(signal.get_first_sample_ptr(), signal.get_buf_size());
    }
}

void Channel::render_stereo(uint32_t start, ChannelScratch& scratch) {
    StereoBuffer& mix = scratch.mix;
    controllers.get_controller(CTRL_MAIN_VOLUME).render_cubed(scratch.volume, start);
    controllers.get_controller(CTRL_PANNING)
        .render_sqr(scratch.left_gain, scratch.right_gain, start);
    mix.make_from_mono(scratch.signal, scratch.volume, scratch.left_gain, scratch.right_gain);
    scrub_non_finite(mix.get_first_left_sample_ptr(), 2 * mix.get_buf_size());
    const auto parameter = [&](unsigned index) {
        return last_int(STEREO_EFFECT_ROWS.parameter(index));
    };
    stereo_effect.render(StereoEffect::effect_type(last_int(CTRL_CHANFX2_TYPE)), mix, mix,
                         parameter(0), parameter(1), parameter(2), parameter(3), parameter(4),
                         controllers.get_controller(CTRL_CHANFX2_WET).get_last_cubed_value(),
                         scratch.stereo_effect);
}

void Channel::send(const StereoBuffer& mix, StereoBuffer* outputs) {
    for (int i = 0; i < NUM_AUX_BUSES; i++) {
        float aux_level = 1.0F;
        if (i > 0) {
            const unsigned controller = i == 1 ? CTRL_AUX1_LEVEL : CTRL_AUX2_LEVEL;
            aux_level = send_level(controllers.get_controller(controller).get_last_value());
        }
        TARQ_ASSERT(aux_level >= 0.0f);
        if (aux_level > 0.0F)
            Buffer::add_scaled(mix, aux_level, outputs[i]);
    }
}

} // namespace tarquil
