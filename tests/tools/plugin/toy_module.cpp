// A plug-in with one output, to render with: 0.25 while a key is down, not a number after it.
//
// With TOY_EFFECT in the environment it says that it is no instrument.

#include <cmath>
#include <cstdlib>
#include <vector>

#include "vst/abi/vst2.h"

namespace tarquil {

namespace {

struct Change {
    int32_t delta;
    float level;
};

std::vector<Change> changes;
float level = 0.0F;
bool is_running = false;

intptr_t VST_CALL dispatch(AEffect* /*effect*/, int32_t opcode, int32_t /*index*/, intptr_t value,
                           void* ptr, float /*opt*/) {
    if (opcode == effMainsChanged)
        is_running = value != 0;
    if (opcode != effProcessEvents)
        return 0;
    const auto* events = static_cast<const VstEvents*>(ptr);
    const VstEvent* const* const records = events->events; // as many as there are
    for (int32_t i = 0; i < events->numEvents; i++) {
        const auto& event = *reinterpret_cast<const VstMidiEvent*>(records[i]);
        if ((event.midiData[0] & 0x70) == 0x10) // a note-on
            changes.push_back({event.deltaFrames, event.midiData[2] != 0 ? 0.25F : NAN});
    }
    return 1;
}

void VST_CALL render(AEffect* /*effect*/, float** /*inputs*/, float** outputs, int32_t frames) {
    size_t next = 0;
    for (int32_t i = 0; i < frames; i++) {
        for (; next < changes.size() && changes[next].delta <= i; next++)
            level = changes[next].level;
        outputs[0][i] = is_running ? level : 1.0F;
    }
    changes.clear();
}

} // namespace

extern "C" [[gnu::visibility("default")]] AEffect* VSTPluginMain(audioMasterCallback host);
extern "C" AEffect* VSTPluginMain(audioMasterCallback host) {
    static AEffect effect;
    level = 0.0F;
    if (host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0F) < kVstVersion)
        return nullptr;
    effect.dispatcher = dispatch;
    effect.processReplacing = render;
    effect.numOutputs = 1;
    effect.flags = effFlagsCanReplacing;
    if (std::getenv("TOY_EFFECT") == nullptr)
        effect.flags |= effFlagsIsSynth;
    return &effect;
}

} // namespace tarquil
