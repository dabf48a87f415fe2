// The part of a block that concerns voices alone, before channels add them up.
//
// Voices do not act on each other before their channel adds them, so the work is ordered by kind:
// first every voice's control signals and oscillators, in pool order, then all voices' filters.

#pragma once

#include <cstdint>
#include <span>

#include "softsynth/voices/voice_filters.h"
#include "softsynth/voices/voice_scratch.h"

namespace tarquil {

class VoiceRenderer {
  public:
    // What the LFOs follow from now on; null for nothing.
    void follow(const TempoValues* tempo) { scratch.tempo = tempo; }

    // Leaves the filtered signal and the amplitude of every voice, in pool order, in its rows, for
    // the block of `size` samples that starts at the absolute sample time `start`.
    void render(std::span<Voice* const> voices, uint32_t start, uint32_t size);

  private:
    VoiceScratch scratch;
    VoiceFilters filters;
};

} // namespace tarquil
