// One MIDI channel: its controllers, its notes, and its chain of effects and filters.

#include "softsynth/voices/channel.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/signal/fade_out.h"

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
    if (voices.count() - fading_voices >= max_voices) {
        Voice* oldest = pool->find_oldest_on_channel(*this);
        if (oldest != nullptr)
            oldest->note_cut(time);
    }
    Voice* voice = pool->alloc();
    if (voice == nullptr)
        return;
    voice->note_on(*this, midi_pitch, velocity, time);
    active_voices[midi_pitch] = voice;
    voices.insert(pool->place_of(*voice));
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
    voices.erase(pool->place_of(v));
    fading_voices -= int(v.is_fading());
}

void Channel::move_clock_back(uint32_t frames, uint32_t now) {
    controllers.move_clock_back(frames);
    // A silence is never longer than what keeps the difference of two times in 31 bits.
    if (int32_t(now - last_render_time) > int32_t(FRESH_SILENCE))
        last_render_time = now - FRESH_SILENCE;
    last_render_time -= frames;
    frozen.time -= frames;
}

int Channel::last_int(unsigned controller) const {
    return controllers.get_controller(controller).get_last_int_value();
}

template <typename Take>
void Channel::for_each_step(uint32_t size, uint32_t start, ChannelScratch& scratch,
                            const Take& take) {
    if (fade != Fade::NONE && fading_voices == 0 && is_silent(start)) {
        fade = Fade::NONE;
        take(ChainStep{.kind = ChainStep::Kind::FORGET}, settings);
    }
    if (!voices.any() && is_silent(start))
        return;
    scratch.init(size);
    if (fade == Fade::DUE) {
        fade = Fade::RUNNING;
        later_sound = false;
        take(ChainStep{.kind = ChainStep::Kind::BEGIN_FADE,
                       .past_type = StereoEffect::effect_type(frozen.bytes[CTRL_CHANFX2_TYPE])},
             settings);
    }
    if (fade == Fade::RUNNING)
        take_fading(size, start, scratch, take);
    else
        take_present(start, scratch, take);
}

void Channel::follow_step(const ChainStep& step, const ChainSettings& step_settings,
                          ChannelScratch& scratch, ChannelOutput& output) {
    switch (step.kind) {
    case ChainStep::Kind::FORGET:
        chains[chain].reset();
        stereo_effect.reset();
        break;
    case ChainStep::Kind::BEGIN_FADE:
        chain = 1 - chain;
        chains[chain].reset();
        chain_is_empty = false;
        stereo_effect.split(step.past_type);
        break;
    case ChainStep::Kind::PAST: {
        StereoBuffer& mix = output.add(step_settings);
        chains[1 - chain].render(step_settings, step.is_still, stereo_effect, DelayLine::Part::PAST,
                                 scratch, mix);
        FadeOut::apply(mix.get_first_left_sample_ptr(), mix.get_buf_size(), step.fade_age);
        break;
    }
    case ChainStep::Kind::PRESENT:
        if (!step.has_sound && chain_is_empty && step_settings.passes_silence && step.is_still) {
            output.add_silence(step_settings);
            break;
        }
        chains[chain].render(step_settings, step.is_still, stereo_effect, DelayLine::Part::PRESENT,
                             scratch, output.add(step_settings));
        chain_is_empty = step_settings.passes_silence;
        break;
    }
}

void Channel::render(uint32_t size, uint32_t start, ChannelScratch& scratch,
                     ChannelOutput& output) {
    output.clear(size);
    for_each_step(size, start, scratch,
                  [&](const ChainStep& step, const ChainSettings& step_settings) {
                      follow_step(step, step_settings, scratch, output);
                  });
}

void Channel::render_voices(uint32_t size, uint32_t start, ChannelScratch& scratch,
                            ChainRecord& record) {
    record.clear(size);
    for_each_step(size, start, scratch,
                  [&](const ChainStep& step, const ChainSettings& step_settings) {
                      record.add(step, step_settings, scratch);
                  });
}

void Channel::render_chain(const ChainRecord& record, ChannelScratch& scratch,
                           ChannelOutput& output) {
    output.clear(record.get_size());
    record.for_each(scratch, [&](const ChainStep& step, const ChainSettings& step_settings) {
        follow_step(step, step_settings, scratch, output);
    });
}

const ChainSettings& Channel::present_settings() {
    if (settings_count != controllers.get_change_count()) {
        settings = ChainSettings(get_sound_controls(false));
        settings_count = controllers.get_change_count();
    }
    return settings;
}

template <typename Take>
void Channel::take_present(uint32_t start, ChannelScratch& scratch, const Take& take) {
    const bool has_sound = sum_voices(scratch.signal, start, false);
    if (is_silent(start))
        return;
    const SoundControls controls = get_sound_controls(false);
    const ChainSettings& present = present_settings();
    ChannelChain::render_rows(present, controls, start, scratch);
    take(ChainStep{.kind = ChainStep::Kind::PRESENT,
                   .has_sound = has_sound,
                   .is_still = controls.are_still()},
         present);
}

template <typename Take>
void Channel::take_fading(uint32_t size, uint32_t start, ChannelScratch& scratch,
                          const Take& take) {
    const SoundControls controls = get_sound_controls(true);
    const ChainSettings past(controls);
    const bool has_sound = sum_voices(scratch.signal, start, true);
    ChannelChain::render_rows(past, controls, start, scratch);
    take(ChainStep{.kind = ChainStep::Kind::PAST,
                   .has_sound = has_sound,
                   .is_still = controls.are_still(),
                   .fade_age = int32_t(start - frozen.time)},
         past);
    later_sound = later_sound || voices.count() > fading_voices;
    if (later_sound)
        take_present(start, scratch, take);
    if (int32_t(start + size - frozen.time) >= int32_t(FadeOut::LENGTH))
        end_fade(start + size);
}

void Channel::silence(uint32_t time) {
    const bool is_first = fade == Fade::NONE;
    voices.for_each([&](uint32_t place) {
        Voice& voice = pool->at(place);
        if (voice.is_fading())
            return;
        if (is_first) {
            voice.start_fade();
            fading_voices++;
        } else if (!voice.is_cut()) {
            voice.note_cut(time);
        }
    });
    std::fill(std::begin(active_voices), std::end(active_voices), nullptr);
    if (!is_first)
        return;
    fade = Fade::DUE;
    frozen.take(controllers, time);
}

void Channel::end_fade(uint32_t end) {
    const VoiceSet before = voices; // those that end leave it
    before.for_each([this](uint32_t place) {
        Voice& voice = pool->at(place);
        if (voice.is_fading())
            voice.free();
    });
    fade = Fade::NONE;
    if (!later_sound)
        last_render_time = end - FRESH_SILENCE;
}

bool Channel::is_silent(uint32_t start) const {
    return int32_t(start - last_render_time) > SILENCE_AFTER;
}

bool Channel::sum_voices(MonoBuffer& signal, uint32_t start, bool fading) {
    signal.nullify();
    bool any = false;
    const VoiceSet before = voices; // those that end leave it
    before.for_each([&](uint32_t place) {
        Voice& voice = pool->at(place);
        if (voice.is_fading() != fading)
            return;
        voice.add_output(signal, start);
        any = true;
    });
    if (any)
        last_render_time = start + signal.get_buf_size();
    return any;
}

} // namespace tarquil
