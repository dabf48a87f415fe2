// The filters of all channels' voices.

#pragma once

#include <cstdint>

class VoicePool;

class VoiceFilters {
  public:
    // Filters the signal row of every active voice, `size` samples, in place.
    void render(VoicePool& pool, uint32_t size);
};
