// A player's sound at a host's rate, from runs of one fixed length on a fixed grid.

#include "player/quantum_stream.h"

namespace tarquil {

void QuantumStream::render(float* left, float* right, uint32_t frames) {
    bridge.render(left, right, frames, [this](float* pcm, uint32_t count) {
        for (; count > 0; count -= QUANTUM, pcm += size_t(2) * QUANTUM)
            audio.run(pcm, QUANTUM);
    });
}

} // namespace tarquil
