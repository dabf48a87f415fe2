// Runs that are put down first and done later.

#include "player/deferred_runs.h"

#include <algorithm>

namespace tarquil {

void DeferredRuns::clear() {
    runs.clear();
    for (unsigned engine = 0; engine < NUM_GM_ENGINES; engine++) {
        events_of[engine].clear();
        events_of[engine].reserve(ROOM_FOR_EVENTS);
        sounds[engine].clear();
    }
    drums_heard.clear();
}

void DeferredRuns::add_run(uint32_t time, uint32_t frames, const Tempo& tempo) {
    runs.push_back({.time = time, .frames = frames, .tempo = tempo});
    blocks.resize(std::max(blocks.size(), runs.size()));
    StagedBlock& block = blocks[runs.size() - 1];
    block.time = time;
    block.size = frames;
    block.tempo = tempo;
    for (std::vector<float>& sound : sounds)
        sound.resize(sound.size() + size_t(2) * frames);
    drums_heard.push_back(0);
}

void DeferredRuns::add_events(unsigned engine, std::span<const midi_event> events) {
    events_of[engine].insert(events_of[engine].end(), events.begin(), events.end());
    runs.back().num_events[engine] += uint32_t(events.size());
}

} // namespace tarquil
