// The part of a block that concerns voices alone, before channels add them up.

#include "softsynth/voices/voice_renderer.h"

#include "softsynth/voices/voice_pool.h"

namespace tarquil {

void VoiceRenderer::render(VoicePool& pool, uint32_t start, uint32_t size) {
    Voice* active[VoicePool::NUM_VOICES];
    uint32_t count = 0;
    for (Voice& voice : pool) {
        if (voice.is_active())
            active[count++] = &voice;
    }
    scratch.init(size);
    for (uint32_t i = 0; i < count; i++)
        active[i]->render_signals(scratch, start, size);
    filters.render({active, count}, size);
}

} // namespace tarquil
