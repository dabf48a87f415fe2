// A player played by a sound device.

#include "standalone/device_player.h"

#include <algorithm>

namespace tarquil {

void DevicePlayer::play(const uint8_t* message, uint32_t size, int32_t delay) {
    if (size == 0 || size > 3)
        return;
    uint8_t bytes[3] = {};
    std::copy_n(message, size, bytes);
    audio.follow_edits();
    audio.add_message(bytes, stream.event_time(delay));
}

void DevicePlayer::render(float* left, float* right, uint32_t frames) {
    while (frames > 0) {
        const uint32_t count = std::min(frames, MAX_NUM_SAMPLES);
        const float* sound = stream.next(count);
        for (uint32_t i = 0; i < count; i++) {
            *left++ = sound[2 * i];
            *right++ = sound[2 * i + 1];
        }
        frames -= count;
    }
}

} // namespace tarquil
