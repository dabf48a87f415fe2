// The engine object: set-up, event dispatch and the block's channels.
#include "softsynth/core/core.h"

#include "common/assertion.h"
#include "common/platform/large_pages.h"
#include "softsynth/signal/flush_to_zero.h"
#include "softsynth/voices/pitch_bend.h"
#include "softsynth/voices/program_change.h"
#include <algorithm>
#include <cstdlib>
#include <new>
#include <span>

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
    : settings(&bank), master(waves), scratch(waves) {
    for (Channel& channel : channels)
        channel.attach(voice_pool, phase_random, waves, timelines);
    emit_global_controllers(bank, channels[0].get_controllers(), 0);
    for (int c = 0; c < NUM_CHANNELS; c++)
        emit_program_change(bank.get_instrument(unsigned(c)), channels[c].get_controllers(), 0);
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
    render_channels(master.get_buses(), num_samples, time);
    follow_globals();
    master.render(master_settings, time, echo_silence, pcm_out);
}

void Tarquil::run_voices(StagedBlock& block, const midi_event* events, uint32_t num_events) {
    TARQ_ASSERT(events && block.size > 0 && block.size <= MAX_NUM_SAMPLES &&
                block.size % GRANULARITY == 0);
    const FlushToZero flush_to_zero;
    follow_tempo(block.tempo);
    process_midi_messages(events, num_events);
    render_voices(block.size, block.time);
    for (int c = 0; c < NUM_CHANNELS; c++) {
        channels[c].render_voices(block.size, block.time, scratch.voice_sums, block.channels[c]);
        channels[c].get_controllers().reset();
    }
    follow_globals();
    block.settings = master_settings;
    block.silence = echo_silence;
}

void Tarquil::run_channels(StagedBlock& block) {
    const FlushToZero flush_to_zero;
    follow_chain_tempo(block.tempo);
    clear(scratch.buses, block.size);
    for (int c = 0; c < NUM_CHANNELS; c++) {
        channels[c].render_chain(block.channels[c], scratch.channel, scratch.channel_output);
        scratch.channel_output.add_to(scratch.buses, nullptr);
    }
    block.buses.clear();
    for (const StereoBuffer& bus : scratch.buses) {
        const float* samples = bus.get_first_left_sample_ptr();
        block.buses.insert(block.buses.end(), samples, samples + size_t(2) * block.size);
    }
}

void Tarquil::run_master(const StagedBlock& block, float* pcm_out) {
    const FlushToZero flush_to_zero;
    master.follow(block.tempo);
    const float* samples = block.buses.data();
    for (StereoBuffer& bus : master.get_buses()) {
        bus.init(block.size);
        std::copy_n(samples, size_t(2) * block.size, bus.get_first_left_sample_ptr());
        samples += size_t(2) * block.size;
    }
    master.render(block.settings, block.time, block.silence, pcm_out);
}

void Tarquil::follow_globals() {
    const ControllerArray& globals = channels[0].get_controllers();
    if (globals_count == globals.get_change_count())
        return;
    master_settings = MasterSettings(globals);
    globals_count = globals.get_change_count();
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

void Tarquil::set_tempo(const Tempo& now) {
    follow_tempo(now);
    follow_chain_tempo(now);
    master.follow(now);
}

void Tarquil::follow_tempo(const Tempo& now) {
    tempo_values.follow(now.samples_per_quarter);
    const TempoValues* const followed = tempo_values.is_on() ? &tempo_values : nullptr;
    voice_renderer.follow(followed);
    if (parallel != nullptr)
        parallel->follow(followed);
}

void Tarquil::follow_chain_tempo(const Tempo& now) {
    chain_tempo.follow(now.samples_per_quarter);
    scratch.channel.stereo_effect.tempo = chain_tempo.is_on() ? &chain_tempo : nullptr;
}

void Tarquil::move_clock_back(uint32_t frames, uint32_t now) {
    move_voices_clock_back(frames, now);
    move_master_clock_back(frames);
}

void Tarquil::move_voices_clock_back(uint32_t frames, uint32_t now) {
    TARQ_ASSERT(now >= frames && now - frames >= MIN_MOVED_CLOCK);
    for (Channel& channel : channels)
        channel.move_clock_back(frames, now);
    voice_pool.move_clock_back(frames);
}

void Tarquil::process_midi_messages(const midi_event* events, uint32_t num_events) {
    echo_silence.reset();
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
            if (event.data1 == SILENCE_MASTER && !echo_silence)
                echo_silence = event.time;
            break;
        default:
            break;
        }
    }
}

void Tarquil::render_channels(Buses& buses, uint32_t num_samples, uint32_t time) {
    clear(buses, num_samples);
    Voice* places[VoicePool::NUM_VOICES];
    const std::span<Voice* const> voices = list_voices(places);
    const bool is_shared_out = parallel != nullptr && parallel->is_worth_it(voices, num_samples);
    if (is_shared_out) {
        parallel->render_voices(voices, time, num_samples);
        parallel->render_channels(channels, time, num_samples);
    } else if (!voices.empty()) {
        voice_renderer.render(voices, time, num_samples);
    }
    for (int c = 0; c < NUM_CHANNELS; c++) {
        if (!is_shared_out)
            channels[c].render(num_samples, time, scratch.channel, scratch.channel_output);
        const ChannelOutput& output =
            is_shared_out ? parallel->get_output(c) : scratch.channel_output;
        output.add_to(buses, channel_taps == nullptr ? nullptr : &channel_taps[c]);
        channels[c].get_controllers().reset();
    }
}

void Tarquil::render_voices(uint32_t num_samples, uint32_t time) {
    Voice* places[VoicePool::NUM_VOICES];
    const std::span<Voice* const> voices = list_voices(places);
    if (!voices.empty())
        voice_renderer.render(voices, time, num_samples);
}

std::span<Voice* const> Tarquil::list_voices(std::span<Voice*, VoicePool::NUM_VOICES> places) {
    uint32_t count = 0;
    active_voices().for_each([&](uint32_t place) { places[count++] = &voice_pool.at(place); });
    return places.first(count);
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

} // namespace tarquil
