// Plays a plug-in from an audio thread.

#include "standalone/plugin_player.h"

#include <algorithm>

#include "vst/tarq_vst.h"

namespace tarquil {

void PluginPlayer::play(const uint8_t* message, uint32_t size, int32_t delay) {
    VstMidiEvent event;
    if (size == 0 || size > 3)
        return;
    std::copy_n(message, size, event.midiData);
    event.deltaFrames = delay;
    VstEvents events;
    events.numEvents = 1;
    events.events[0] = reinterpret_cast<VstEvent*>(&event);
    plugin.processEvents(&events);
}

void PluginPlayer::render(float* left, float* right, int32_t frames) {
    float* outputs[] = {left, right};
    plugin.processReplacing(nullptr, outputs, frames);
}

} // namespace tarquil
