// An engine whose sound is added to another's, and which runs only while it sounds.

#pragma once

#include <cstdint>
#include <span>

#include "softsynth/core/core.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

// For the audio thread: nothing is allocated.
class SideEngine {
  public:
    static constexpr uint32_t LONGEST_RUN = 64; // frames

    // It runs until it has been silent for so long, in frames.
    explicit SideEngine(uint32_t silence) : rest_after(silence), quiet_frames(silence) {}

    // Renders `frames` (whole granules) that start at `time`, with their events, into interleaved
    // stereo.  False, and nothing is written, without an engine, or when it rests and there is no
    // event.
    bool render(Tarquil* engine, std::span<const midi_event> events, float* pcm, uint32_t frames,
                uint32_t time);
    // Adds the same, at most LONGEST_RUN, to what is there.
    bool run(Tarquil* engine, std::span<const midi_event> events, float* pcm, uint32_t frames,
             uint32_t time);

    [[nodiscard]] bool rests() const { return quiet_frames >= rest_after; }
    // In its last run.
    [[nodiscard]] bool was_heard() const { return quiet_frames == 0; }
    // Lets it rest from now on.
    void rest() { quiet_frames = rest_after; }

  private:
    const uint32_t rest_after;
    uint32_t quiet_frames;
};

// Interleaved.
inline void add_sound(const float* sound, float* sum, uint32_t frames) {
    for (uint32_t i = 0; i < 2 * frames; i++)
        sum[i] += sound[i];
}

} // namespace tarquil
