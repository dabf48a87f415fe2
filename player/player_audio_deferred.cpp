// The audio side of a player: runs that are put down first and done later.

#include <algorithm>

#include "common/assertion.h"
#include "player/player_audio.h"

namespace tarquil {

void PlayerAudio::defer(DeferredRuns& later, uint32_t frames) {
    follow_edits();
    if (plays_gm()) {
        play_due_in_gm(frames);
        later.add_run(curr_time, frames, next_tempo(frames));
        gm->defer(later);
        publish_gm_programs();
    } else {
        TARQ_ASSERT(gm == nullptr || !gm->has_rest());
        const std::span<const midi_event> due = events.take(curr_time, curr_time + frames);
        later.add_run(curr_time, frames, next_tempo(frames));
        later.add_events(MELODIC_ENGINE, due);
    }
    curr_time += frames;
    if (const uint32_t excess = clock_excess()) {
        later.move_clock_back(excess);
        move_clock_back(excess);
    }
    finish_run();
}

void PlayerAudio::perform(DeferredRuns& later, unsigned part) {
    if (part == RHYTHM_ENGINE) {
        gm->perform_drums(later, link.drum_engine.load(std::memory_order_acquire));
        return;
    }
    Tarquil& engine = *link.engine.load(std::memory_order_acquire);
    later.for_each_run(part, [&](size_t place, const DeferredRuns::Run& run,
                                 std::span<const midi_event> due, float* /*pcm*/) {
        engine.run_voices(later.block(place), due.data(), uint32_t(due.size()));
        if (plays_gm())
            gm->count_voices(part, engine);
        if (run.moved_back > 0)
            engine.move_voices_clock_back(run.moved_back, run.time + run.frames);
    });
}

void PlayerAudio::go_on(DeferredRuns& later) {
    Tarquil& engine = *link.engine.load(std::memory_order_acquire);
    for (size_t place = 0; place < later.get_runs().size(); place++)
        engine.run_channels(later.block(place));
}

void PlayerAudio::finish(DeferredRuns& later) {
    Tarquil& engine = *link.engine.load(std::memory_order_acquire);
    engine.set_output_bound(output_bound());
    later.for_each_run(MELODIC_ENGINE, [&](size_t place, const DeferredRuns::Run& run,
                                           std::span<const midi_event> /*due*/, float* pcm) {
        engine.run_master(later.block(place), pcm);
        if (run.moved_back > 0)
            engine.move_master_clock_back(run.moved_back);
    });
}

void PlayerAudio::mix(DeferredRuns& later, float* pcm) {
    if (plays_gm()) {
        gm->mix(later, pcm);
        return;
    }
    later.for_each_run(
        MELODIC_ENGINE,
        [&pcm](size_t /*place*/, const DeferredRuns::Run& run, std::span<const midi_event> /*due*/,
               const float* sound) { pcm = std::copy_n(sound, size_t(2) * run.frames, pcm); });
}

} // namespace tarquil
