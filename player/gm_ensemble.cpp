// Two engines behind the General MIDI dialect.

#include "player/gm_ensemble.h"

#include "player/shared_waveforms.h"

#include <algorithm>
#include <cmath>

#include "common/assertion.h"
#include "player/gm_sounds_of.h"

namespace tarquil {

namespace {

// -120 dBFS.
constexpr float SILENCE = 1e-6F;

// The drums' phases are others than the melodic parts'.
constexpr uint32_t SECOND_SEED = 0x9E3779B9;

bool is_silent(const float* pcm) {
    return std::all_of(pcm, pcm + size_t(2) * GmEnsemble::QUANTUM,
                       [](float value) { return std::fabs(value) < SILENCE; });
}

} // namespace

void GmEnsemble::Queues::put(unsigned engine, const midi_event& event) {
    if (midi_kind(event.status) != MIDI_SILENCE) {
        push(engine, event);
        return;
    }
    // The engine's own way to end a channel: every note is let go.
    for (unsigned note = 0; note < NUM_KEYS; note++)
        push(engine, {.time = event.time,
                      .status = midi_status(MIDI_NOTE_OFF, midi_channel(event.status)),
                      .data1 = uint8_t(note)});
}

void GmEnsemble::Queues::push(unsigned engine, const midi_event& event) {
    TARQ_ASSERT(counts[engine] < CAPACITY);
    events[engine][counts[engine]++] = event;
}

bool GmEnsemble::Queues::has_room() const {
    // For this call and for what is scheduled until the quantum's end.
    return std::all_of(counts.begin(), counts.end(), [](uint32_t count) {
        return count + 2 * GmDialect::MAX_EVENTS_PER_CALL <= CAPACITY;
    });
}

GmEnsemble::GmEnsemble(const TarqSettings& melodic, const TarqSettings* drums, const GmMap* map,
                       uint32_t seed)
    : queues(std::make_unique<Queues>()) {
    const TarqSettings* const banks[NUM_GM_ENGINES] = {&melodic, drums};
    for (unsigned i = 0; i < NUM_GM_ENGINES; i++) {
        if (banks[i] == nullptr)
            continue;
        engines[i].reset(new Tarquil(*banks[i], shared_waveforms()));
        engines[i]->seed_phases(i == MELODIC_ENGINE ? seed : seed ^ SECOND_SEED);
        queues->counts[i] =
            banks[i]->emit_global_controllers(queues->events[i].data(), 0, CAPACITY);
    }
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++)
        globals[number] = uint8_t(melodic.get_global_controller(number));
    GmSounds sounds = sounds_of(melodic, drums);
    sounds.globals = &globals;
    dialect.set_sounds(sounds, map);
    dialect.start(0);
}

bool GmEnsemble::add_message(uint32_t message_time, std::span<const uint8_t> message) {
    if (!queues->has_room())
        return false;
    dialect.translate(message_time, message, *queues);
    return true;
}

void GmEnsemble::release_all(uint32_t release_time) {
    if (queues->has_room())
        dialect.release_all(release_time, *queues);
}

void GmEnsemble::render(float* pcm) {
    dialect.advance(time + QUANTUM, *queues);
    if (queues->counts[RHYTHM_ENGINE] > 0)
        quiet = 0;
    run(MELODIC_ENGINE, pcm);
    if (drums_sound())
        add_drums(pcm);
    queues->counts = {};
    limiter.render(pcm, QUANTUM);
    time += QUANTUM;
}

void GmEnsemble::run(unsigned engine, float* pcm) {
    engines[engine]->run(pcm, QUANTUM, queues->events[engine].data(), queues->counts[engine], time);
    most_voices = std::max(most_voices, unsigned(engines[engine]->get_voice_pool().voices_used()));
}

void GmEnsemble::add_drums(float* pcm) {
    alignas(16) float drums[2 * QUANTUM];
    run(RHYTHM_ENGINE, drums);
    for (uint32_t i = 0; i < 2 * QUANTUM; i++)
        pcm[i] += drums[i];
    const bool is_quiet =
        engines[RHYTHM_ENGINE]->get_voice_pool().voices_used() == 0 && is_silent(drums);
    quiet = is_quiet ? quiet + 1 : 0;
}

} // namespace tarquil
