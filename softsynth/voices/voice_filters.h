// The filters of all channels' voices, batched by kind so that many run side by side.
//
// All ladders are one batch, whatever their type; biquads are one batch for each depth.  Controls
// are read at multiples of CONTROL_PERIOD from the block's start for all voices alike, so that a
// batch shares its segments.

#pragma once

#include <cstdint>
#include <span>

#include "softsynth/kernels/ladder_lanes.h"
#include "softsynth/voices/voice_pool.h"

namespace tarquil {

class VoiceFilters {
  public:
    // Filters the signal row of every voice, `size` samples (a multiple of 4), in place.
    void render(std::span<Voice* const> voices, uint32_t size);

  private:
    static constexpr uint32_t MAX_VOICES = VoicePool::NUM_VOICES;

    // Of one kind.
    void render_ladders(std::span<Voice* const> voices, uint32_t size);
    void render_biquads(std::span<Voice* const> voices, int depth, uint32_t size);

    // Takes the rows of a batch.
    void take(std::span<Voice* const> voices);

    uint32_t count = 0; // of the batch
    float* signal[MAX_VOICES] = {};
    const float* cutoff[MAX_VOICES] = {};
    const float* resonance[MAX_VOICES] = {};

    alignas(64) float ladder_scratch[LadderLanes::SCRATCH_OF_MANY] = {};
};

} // namespace tarquil
