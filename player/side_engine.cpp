// An engine whose sound is added to another's.

#include "player/side_engine.h"

#include <algorithm>
#include <cmath>

#include "common/assertion.h"

namespace tarquil {

namespace {

// -120 dBFS.
constexpr float REST_LEVEL = 1e-6F;

bool is_at_rest(const float* pcm, uint32_t frames) {
    return std::all_of(pcm, pcm + size_t(2) * frames,
                       [](float value) { return std::fabs(value) < REST_LEVEL; });
}

} // namespace

bool SideEngine::render(Tarquil* engine, std::span<const midi_event> events, float* pcm,
                        uint32_t frames, uint32_t time) {
    if (!events.empty())
        quiet_frames = 0;
    if (engine == nullptr || rests())
        return false;
    static constexpr midi_event NONE;
    engine->run(pcm, frames, events.empty() ? &NONE : events.data(), uint32_t(events.size()), time);
    const bool is_quiet = engine->num_voices() == 0 && is_at_rest(pcm, frames);
    quiet_frames = is_quiet ? quiet_frames + frames : 0;
    return true;
}

bool SideEngine::run(Tarquil* engine, std::span<const midi_event> events, float* pcm,
                     uint32_t frames, uint32_t time) {
    TARQ_ASSERT(frames <= LONGEST_RUN);
    alignas(16) float sound[2 * LONGEST_RUN];
    const bool is_heard = render(engine, events, sound, frames, time);
    if (is_heard)
        add_sound(sound, pcm, frames);
    return is_heard;
}

} // namespace tarquil
