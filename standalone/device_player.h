// A player played by a sound device: messages in, blocks out, nothing allocated.

#pragma once

#include <cstdint>

#include "player/granule_stream.h"
#include "player/player.h"

namespace tarquil {

// For the device's thread.
class DevicePlayer {
  public:
    // The player stays as long as the object.
    explicit DevicePlayer(Player& played) : audio(played.audio()), stream(audio) {}

    // A message of up to three bytes, `delay` frames into the next block; longer ones are ignored.
    void play(const uint8_t* message, uint32_t size, int32_t delay);

    // `frames` samples to each side.
    void render(float* left, float* right, uint32_t frames);

  private:
    PlayerAudio& audio;
    GranuleStream stream;
};

} // namespace tarquil
