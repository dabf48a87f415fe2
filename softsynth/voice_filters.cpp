// The filters of all channels' voices.

#include "softsynth/voice_filters.h"

#include "softsynth/voice_pool.h"

void VoiceFilters::render(VoicePool& pool, uint32_t size) {
    for (Voice& voice : pool) {
        if (!voice.is_active())
            continue;
        VoiceSignals& signals = voice.get_signals();
        if (LadderFilter* ladder = voice.get_ladder())
            ladder->render(signals.signal, size, signals.cutoff, signals.resonance, 1);
        else
            voice.get_biquads().render(signals.signal, size, signals.cutoff, signals.resonance, 1);
    }
}
