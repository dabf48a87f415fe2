// A player in the General MIDI dialect.

#include "player/gm_ensemble.h"

#include <algorithm>

#include "common/assertion.h"
#include "player/controller_events.h"
#include "player/gm_sounds_of.h"

namespace tarquil {

void GmEnsemble::Queues::put(unsigned engine, const midi_event& event) {
    TARQ_ASSERT(counts[engine] < CAPACITY);
    events[engine][counts[engine]++] = event;
}

bool GmEnsemble::Queues::has_room() const {
    // For this call and for what is scheduled until the run's end.
    return std::all_of(counts.begin(), counts.end(), [](uint32_t count) {
        return count + 2 * GmDialect::MAX_EVENTS_PER_CALL <= CAPACITY;
    });
}

GmEnsemble::GmEnsemble() : queues(std::make_unique<Queues>()) {}

void GmEnsemble::copy_bank(const BankBytes& bank) {
    for (unsigned i = 0; i < GM_PROGRAMS; i++)
        programs[i] = bank.program(i);
    globals = bank.global();
}

void GmEnsemble::begin(uint32_t time, const GmSet& new_set,
                       const ChannelPrograms& channel_programs) {
    // The dialect knows nothing of what waited for the next run.
    queues->counts = {};
    refresh_waits = is_ending = false;
    silence(MELODIC_ENGINE, time);
    if (!drum_side.rests())
        silence(RHYTHM_ENGINE, time);
    take_set(new_set);
    dialect.start(time);
    for (unsigned channel = 0; channel < channel_programs.size(); channel++)
        dialect.choose_program(channel, channel_programs[channel]);
    put_programs(MELODIC_ENGINE, time);
    if (set->drums != nullptr)
        put_programs(RHYTHM_ENGINE, time);
    put_globals(time);
}

void GmEnsemble::silence(unsigned engine, uint32_t time) {
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        queues->put(
            engine,
            {.time = time, .status = midi_status(MIDI_SILENCE, channel), .data1 = SILENCE_MASTER});
}

void GmEnsemble::replace_set(uint32_t time, const GmSet& new_set) {
    dialect.panic(time, *queues);
    take_set(new_set);
    put_globals(time);
}

void GmEnsemble::take_set(const GmSet& new_set) {
    set = &new_set;
    GmSounds sounds = drum_sounds_of(set->drums.get());
    for (unsigned i = 0; i < GM_PROGRAMS; i++)
        sounds.melodic[i] = &programs[i];
    sounds.globals = &globals;
    dialect.set_sounds(sounds, &set->map, &set->guest_rules);
}

void GmEnsemble::end(uint32_t time) {
    queues->counts = {};
    dialect.panic(time, *queues);
    queues->counts[MELODIC_ENGINE] = 0;
    is_ending = !drum_side.rests() || !limiter.is_idle();
}

void GmEnsemble::put_globals(uint32_t time) {
    const auto put = [&](unsigned engine, const ControllerBytes& bytes) {
        uint32_t& count = queues->counts[engine];
        TARQ_ASSERT(count + NUM_CONTROLLERS <= CAPACITY);
        count += global_events(bytes, time, &queues->events[engine][count]);
    };
    put(MELODIC_ENGINE, globals);
    if (set->drums != nullptr)
        put(RHYTHM_ENGINE, set->drums->get_global_bytes());
}

void GmEnsemble::put_programs(unsigned engine, uint32_t time) {
    uint32_t& count = queues->counts[engine];
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        count += program_events(programs[channel], channel, time, &queues->events[engine][count]);
}

bool GmEnsemble::play(const midi_event& record) {
    if (!queues->has_room())
        return false;
    if (is_midi_status(record.status))
        dialect.translate(record, *queues);
    else
        set_byte(record.time, record.status, record.data1, record.data2);
    return true;
}

void GmEnsemble::set_byte(uint32_t time, unsigned program, unsigned number, uint8_t value) {
    (is_global_controller(number) ? globals : programs[program])[number] = value;
    if (queues->has_room())
        dialect.refresh_byte(time, program, number, *queues);
    else
        refresh_waits = true;
}

void GmEnsemble::refresh(uint32_t time) {
    refresh_waits = !queues->has_room();
    if (refresh_waits)
        return;
    dialect.refresh(time, *queues);
    put_globals(time);
}

bool GmEnsemble::panic(uint32_t time) {
    const bool fits = queues->has_room();
    if (fits)
        dialect.panic(time, *queues);
    return fits;
}

void GmEnsemble::run(const Engines& engines, float* pcm, uint32_t frames, uint32_t time) {
    TARQ_ASSERT(frames <= LONGEST_RUN);
    dialect.advance(time + frames, *queues);
    const std::span<const midi_event> events = take_events(MELODIC_ENGINE);
    engines.melodic->run(pcm, frames, events.data(), uint32_t(events.size()), time);
    count_voices(MELODIC_ENGINE, *engines.melodic);
    add_drums(engines.drums, pcm, frames, time);
    limiter.render(pcm, frames);
}

void GmEnsemble::defer(DeferredRuns& later) {
    const DeferredRuns::Run& run = later.get_runs().back();
    TARQ_ASSERT(run.frames <= LONGEST_RUN);
    dialect.advance(run.time + run.frames, *queues);
    for (unsigned engine = 0; engine < NUM_GM_ENGINES; engine++)
        later.add_events(engine, take_events(engine));
}

void GmEnsemble::perform_drums(DeferredRuns& later, Tarquil* engine) {
    later.for_each_run(RHYTHM_ENGINE, [&](size_t place, const DeferredRuns::Run& run,
                                          std::span<const midi_event> events, float* pcm) {
        if (engine != nullptr)
            engine->set_tempo(run.tempo);
        const bool is_heard = drum_side.render(engine, events, pcm, run.frames, run.time);
        if (is_heard)
            count_voices(RHYTHM_ENGINE, *engine);
        later.set_drums_heard(place, is_heard);
        if (engine != nullptr && run.moved_back > 0)
            engine->move_clock_back(run.moved_back, run.time + run.frames);
    });
}

void GmEnsemble::mix(DeferredRuns& later, float* pcm) {
    const float* drums = later.sound(RHYTHM_ENGINE);
    later.for_each_run(MELODIC_ENGINE,
                       [&](size_t place, const DeferredRuns::Run& run,
                           std::span<const midi_event> /*events*/, const float* melody) {
                           std::copy_n(melody, size_t(2) * run.frames, pcm);
                           if (later.are_drums_heard(place))
                               add_sound(drums, pcm, run.frames);
                           limiter.render(pcm, run.frames);
                           drums += size_t(2) * run.frames;
                           pcm += size_t(2) * run.frames;
                       });
}

void GmEnsemble::run_rest(Tarquil* drum_engine, float* pcm, uint32_t frames, uint32_t time) {
    for (uint32_t done = 0; done < frames; done += LONGEST_RUN) {
        const uint32_t piece = std::min(frames - done, LONGEST_RUN);
        add_drums(drum_engine, pcm + size_t(2) * done, piece, time + done);
        limiter.render(pcm + size_t(2) * done, piece);
    }
    const bool drums_sound = drum_engine != nullptr && drum_side.was_heard();
    is_ending = drums_sound || !limiter.is_idle();
    if (!is_ending)
        drum_side.rest();
}

std::span<const midi_event> GmEnsemble::take_events(unsigned engine) {
    const uint32_t count = queues->counts[engine];
    queues->counts[engine] = 0;
    return {queues->events[engine].data(), count};
}

void GmEnsemble::add_drums(Tarquil* engine, float* pcm, uint32_t frames, uint32_t time) {
    if (drum_side.run(engine, take_events(RHYTHM_ENGINE), pcm, frames, time))
        count_voices(RHYTHM_ENGINE, *engine);
}

} // namespace tarquil
