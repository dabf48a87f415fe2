// When the sound after a song's last event ends.

#include "tools/render/tail.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

uint32_t Tail::add(const float* frames, uint32_t num_frames, uint32_t time) {
    const uint32_t block_end = time + num_frames;
    if (is_auto && block_end > start) {
        for (uint32_t i = std::max(start, time) - time; i < num_frames; i++) {
            const bool is_silent = std::fabs(frames[2 * i]) < SILENCE_LEVEL &&
                                   std::fabs(frames[2 * i + 1]) < SILENCE_LEVEL;
            if (!is_silent)
                last_sound = time + i + 1;
            else if (time + i + 1 - last_sound >= SILENCE_SAMPLES) {
                end = std::min(end, time + i + 1);
                break;
            }
        }
    }
    return std::min(block_end, std::max(end, time)) - time;
}

} // namespace tarquil
