// The voices that all channels share.

#include "softsynth/voice_pool.h"

#include <algorithm>

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
            !voice.is_cut()) {
            best_time = voice.get_start_time();
            best = &voice;
        }
    }
    return best;
}

int VoicePool::voices_used() const {
    return int(std::count_if(begin(), end(), [](const Voice& voice) { return voice.is_active(); }));
}
