// The part of a block that concerns voices alone, before channels add them up.

#include "softsynth/voices/voice_renderer.h"

namespace tarquil {

void VoiceRenderer::render(std::span<Voice* const> voices, uint32_t start, uint32_t size) {
    scratch.init(size);
    for (Voice* voice : voices)
        voice->render_signals(scratch, start, size);
    filters.render(voices, size);
}

} // namespace tarquil
