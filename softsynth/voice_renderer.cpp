// The part of a block that concerns voices alone, before channels add them up.

#include "softsynth/voice_renderer.h"

#include "softsynth/voice_pool.h"

void VoiceRenderer::render(VoicePool& pool, uint32_t start, uint32_t size) {
    scratch.init(size);
    for (Voice& voice : pool) {
        if (voice.is_active())
            voice.render_signals(scratch, start, size);
    }
    filters.render(pool, size);
}
