// States from a host: what loads plays and saves again, what does not changes nothing.
//
// The first byte says which kind of state the rest is.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include "common/assertion.h"
#include "vst/tarq_vst.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr int32_t BLOCK = 64;

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const auto plugin = [] {
        auto made = std::make_unique<TarqVST>(nullptr);
        made->setBlockSize(BLOCK);
        made->resume();
        return made;
    }();
    if (size < 2)
        return 0;
    const bool is_program = data[0] % 2 != 0;
    plugin->setProgram(data[0] / 2);
    std::string before;
    plugin->save_curr_instrument(before);
    if (plugin->setChunk(data + 1, int32_t(size - 1), is_program) == 0) {
        std::string after;
        plugin->save_curr_instrument(after);
        TARQ_ASSERT(after == before);
        return 0;
    }
    VstMidiEvent note;
    note.midiData[0] = char(0x90 + data[0] % 16);
    note.midiData[1] = char(data[1] % 128);
    note.midiData[2] = 100;
    VstEvents events;
    events.numEvents = 1;
    events.events[0] = reinterpret_cast<VstEvent*>(&note);
    plugin->processEvents(&events);
    float left[BLOCK];
    float right[BLOCK];
    float* outputs[] = {left, right};
    plugin->processReplacing(nullptr, outputs, BLOCK);
    TARQ_ASSERT(std::all_of(left, left + BLOCK, [](float x) { return std::fabs(x) <= 1.0F; }));
    void* state = nullptr;
    const int32_t bytes = plugin->getChunk(&state, true);
    const std::string saved(static_cast<const char*>(state), size_t(bytes));
    TARQ_ASSERT(plugin->setChunk(saved.data(), bytes, true) == 1);
    return 0;
}

} // namespace tarquil
