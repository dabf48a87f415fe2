// Plays a plug-in from an audio thread: messages in, blocks out, nothing allocated.

#pragma once

#include <cstdint>

namespace tarquil {

class TarqVST;

class PluginPlayer {
  public:
    explicit PluginPlayer(TarqVST& played_plugin) : plugin(played_plugin) {}

    // A message of up to three bytes, `delay` frames into the next block; longer ones are ignored.
    void play(const uint8_t* message, uint32_t size, int32_t delay);

    // `frames` samples to each side.
    void render(float* left, float* right, int32_t frames);

  private:
    TarqVST& plugin;
};

} // namespace tarquil
