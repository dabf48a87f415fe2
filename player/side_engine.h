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

    // Adds `frames` (whole granules, at most LONGEST_RUN) that start at `time`, with their events,
    // to interleaved stereo.  Nothing without an engine, or when it rests and there is no event.
    void run(Tarquil* engine, std::span<const midi_event> events, float* pcm, uint32_t frames,
             uint32_t time);

    [[nodiscard]] bool rests() const { return quiet_frames >= rest_after; }

  private:
    const uint32_t rest_after;
    uint32_t quiet_frames;
};

} // namespace tarquil
