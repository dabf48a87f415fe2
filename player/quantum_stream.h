// A player's sound at a host's rate, from runs of one fixed length on a fixed grid, so that its
// bytes do not depend on the lengths of the blocks that it is asked for.

#pragma once

#include <cstdint>

#include "player/player_audio.h"
#include "softsynth/rate/rate_bridge.h"

namespace tarquil {

class QuantumStream {
  public:
    // Engine frames of every run.  Controls are read per run, so this is also how exactly they
    // sound; half of it costs a fifth more time.
    static constexpr uint32_t QUANTUM = 64;

    // The player's audio side stays as long as the object.
    explicit QuantumStream(PlayerAudio& played) : audio(played) {}

    // Takes the host's rate in Hz; false, and nothing has changed, for one beyond reason.  Before
    // anything else, and not on the audio thread.
    [[nodiscard]] bool activate(double rate) { return bridge.activate(rate, QUANTUM); }

    // Drops what is on its way to the host.
    void reset() { bridge.reset(); }

    // How much later than its event a sound comes, in host frames.
    [[nodiscard]] uint32_t latency_frames() const { return bridge.latency_frames(); }

    // The engine's time of the next block's frame `delay`.
    [[nodiscard]] uint32_t event_time(uint32_t delay) const {
        const uint64_t frame = bridge.engine_time(bridge.host_frame() + delay);
        return audio.time() + uint32_t(frame - bridge.engine_frame());
    }

    // Writes the next `frames`, any number, to each side.
    void render(float* left, float* right, uint32_t frames);

  private:
    PlayerAudio& audio;
    RateBridge bridge;
};

} // namespace tarquil
