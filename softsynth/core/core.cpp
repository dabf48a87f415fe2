// The engine object: set-up, event dispatch and the block loop.

#include "softsynth/core/core.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "common/assertion.h"
#include "common/platform/large_pages.h"
#include "softsynth/signal/finite.h"
#include "softsynth/signal/flush_to_zero.h"
#include "softsynth/voices/pitch_bend.h"
#include "softsynth/voices/program_change.h"

namespace tarquil {

static_assert(alignof(Tarquil) <= TARQUIL_ALIGN);

void* Tarquil::operator new(size_t size) {
    // The raw block's pointer lies just before the object.
    void* ptr = std::malloc(size + TARQUIL_ALIGN - 1 + sizeof(void*));
    if (ptr == nullptr)
        throw std::bad_alloc();
    advise_large_pages(ptr, size);
    const uintptr_t first = reinterpret_cast<uintptr_t>(ptr) + sizeof(void*);
    const uintptr_t aligned = (first + TARQUIL_ALIGN - 1) & ~uintptr_t(TARQUIL_ALIGN - 1);
    auto* synth_ptr = static_cast<char*>(ptr) + (aligned - reinterpret_cast<uintptr_t>(ptr));
    TARQ_ASSERT(((intptr_t)synth_ptr & TARQUIL_ALIGN_MASK) == 0);
    TARQ_ASSERT((intptr_t)synth_ptr - (intptr_t)ptr < (int)(TARQUIL_ALIGN + sizeof(void*)));
    reinterpret_cast<void**>(synth_ptr)[-1] = ptr;
    return synth_ptr;
}

void Tarquil::operator delete(void* synth) {
    if (synth != nullptr)
        std::free(static_cast<void**>(synth)[-1]);
}

Tarquil::Tarquil(const TarqSettings& bank, const WaveformStore& waves)
    : settings(&bank), scratch(waves) {
    for (Channel& channel : channels)
        channel.attach(voice_pool, phase_random, waves, timelines);
    emit_global_controllers(bank, channels[0].get_controllers(), 0);
    for (int c = 0; c < NUM_CHANNELS; c++)
        emit_program_change(bank.get_instrument(unsigned(c)), channels[c].get_controllers(), 0);
    aux_filter.init(FILTER_HIGHPASS, 1);
    compressor.reset();
    retrigger.reset();
    generate_pitch_bend_table();
}

void Tarquil::run(float* pcm_out, uint32_t num_samples, const midi_event* events,
                  uint32_t num_events, uint32_t time) {
    const midi_event* mid = events;
    TARQ_ASSERT(pcm_out);
    TARQ_ASSERT(num_samples > 0);
    TARQ_ASSERT(mid);
    TARQ_ASSERT(num_samples <= MAX_NUM_SAMPLES);
    // clang-format off
    TARQ_ASSERT((num_samples & (GRANULARITY-1)) == 0);
    // clang-format on
    const FlushToZero flush_to_zero;
    process_midi_messages(events, num_events);
    render(pcm_out, num_samples, time);
    scrub_non_finite(pcm_out, 2 * num_samples);
    for (uint32_t i = 0; i < 2 * num_samples; i++)
        pcm_out[i] = std::clamp(pcm_out[i], -1.0F, 1.0F);
}

NoteView Tarquil::newest_note(uint32_t mask, uint32_t start, uint32_t num_samples) const {
    const Voice* newest = nullptr;
    for (uint32_t c = 0; mask >> c != 0; c++) {
        if ((mask >> c & 1U) == 0)
            continue;
        channels[c].get_voices().for_each([&](uint32_t place) {
            const Voice& voice = voice_pool.begin()[place];
            if (!voice.is_fading() && !voice.is_cut() &&
                (newest == nullptr ||
                 int32_t(voice.get_start_time() - newest->get_start_time()) >= 0))
                newest = &voice;
        });
    }
    return newest != nullptr ? newest->view(start, num_samples) : NoteView();
}

void Tarquil::set_band_muted(unsigned band, bool muted) {
    TARQ_ASSERT(band < MC_N_BANDS);
    band_muted[band].store(muted, std::memory_order_relaxed);
}

bool Tarquil::is_band_muted(unsigned band) const {
    TARQ_ASSERT(band < MC_N_BANDS);
    return band_muted[band].load(std::memory_order_relaxed);
}

void Tarquil::set_tempo(const Tempo& now) {
    tempo = now;
    tempo_values.follow(now.samples_per_quarter);
    const TempoValues* const followed = tempo_values.is_on() ? &tempo_values : nullptr;
    scratch.channel.stereo_effect.tempo = followed;
    voice_renderer.follow(followed);
    if (parallel != nullptr)
        parallel->follow(followed);
}

void Tarquil::move_clock_back(uint32_t frames, uint32_t now) {
    TARQ_ASSERT(now >= frames && now - frames >= MIN_MOVED_CLOCK);
    for (Channel& channel : channels)
        channel.move_clock_back(frames, now);
    echo_fade_start -= frames;
    voice_pool.move_clock_back(frames);
}

void Tarquil::process_midi_messages(const midi_event* events, uint32_t num_events) {
    for (uint32_t i = 0; i < num_events; i++) {
        const midi_event& event = events[i];
        Channel& channel = channels[midi_channel(event.status)];
        switch (midi_kind(event.status)) {
        case MIDI_NOTE_OFF:
            channel.note_off(event.time, event.data1);
            break;
        case MIDI_NOTE_ON:
            // A repeated note releases the sounding one first.
            channel.note_off(event.time, event.data1);
            channel.note_on(event.time, event.data1, event.data2);
            break;
        case MIDI_CONTROL_CHANGE:
            channel.get_controllers()
                .get_controller(event.data1)
                .push_back({event.time, event.data2});
            break;
        case MIDI_PROGRAM_CHANGE:
            emit_program_change(settings->get_instrument(event.data1), channel.get_controllers(),
                                event.time);
            break;
        case MIDI_SILENCE:
            channel.silence(event.time);
            if (event.data1 == SILENCE_MASTER)
                silence_echoes(event.time);
            break;
        default:
            break;
        }
    }
}

void Tarquil::silence_echoes(uint32_t time) {
    if (echoes_fade)
        return;
    echoes_fade = true;
    echo_fade_start = time;
}

} // namespace tarquil
