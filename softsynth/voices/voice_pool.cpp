// The voices that all channels share.

#include "softsynth/voices/voice_pool.h"

#include <algorithm>

namespace tarquil {

namespace {

// Later starts are never chosen for stealing.
constexpr uint32_t LATEST_START = 0xF0000000;

} // namespace

Voice* VoicePool::alloc() {
    Voice* found =
        std::find_if(begin(), end(), [](const Voice& voice) { return !voice.is_active(); });
    return found == end() ? nullptr : found;
}

Voice* VoicePool::find_oldest_on_channel(const Channel& channel) {
    uint32_t best_time = LATEST_START;
    Voice* best = nullptr;
    for (Voice& voice : *this) {
        if (voice.belongs_to_channel(channel) && voice.get_start_time() < best_time &&
            !voice.is_cut() && !voice.is_fading()) {
            best_time = voice.get_start_time();
            best = &voice;
        }
    }
    return best;
}

void VoicePool::move_clock_back(uint32_t frames) {
    uint32_t old_starts[NUM_VOICES];
    std::transform(begin(), end(), old_starts,
                   [](const Voice& voice) { return voice.get_start_time(); });
    for (Voice& voice : *this) {
        const uint32_t start = voice.get_start_time();
        // What lies before the new clock's start keeps only its order.
        const auto rank = std::count_if(old_starts, old_starts + NUM_VOICES,
                                        [start](uint32_t other) { return other < start; });
        voice.move_clock_back(frames,
                              start >= frames + NUM_VOICES ? start - frames : uint32_t(rank));
    }
}

int VoicePool::voices_used() const {
    return int(std::count_if(begin(), end(), [](const Voice& voice) { return voice.is_active(); }));
}

} // namespace tarquil
