// A small host: loads the built module and drives it by its C interface alone.

#pragma once

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "vst/abi/vst2.h"

namespace tarquil {

class PluginHost {
  public:
    // The module; the first one that is loaded serves all.
    static inline std::string path = PLUGIN_PATH;

    explicit PluginHost(int32_t block_size = 256, bool start = true,
                        audioMasterCallback host = answer) {
        static void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr)
            throw std::runtime_error(dlerror());
        using Entry = AEffect* (*)(audioMasterCallback);
        effect = reinterpret_cast<Entry>(dlsym(module, "VSTPluginMain"))(host);
        call(effOpen);
        if (!start)
            return;
        call(effSetSampleRate, 0, 0, nullptr, 44100.0F);
        call(effSetBlockSize, 0, block_size);
        call(effMainsChanged, 0, 1);
    }
    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;
    ~PluginHost() { call(effClose); }

    intptr_t call(int32_t opcode, int32_t index = 0, intptr_t value = 0, void* ptr = nullptr,
                  float opt = 0.0F) {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }

    std::string text(int32_t opcode, int32_t index = 0) {
        char buffer[256] = "";
        call(opcode, index, 0, buffer);
        return buffer;
    }

    // To be played `delay` frames into the next block.
    void midi(unsigned status, unsigned data1, unsigned data2 = 0, int32_t delay = 0) {
        VstMidiEvent event;
        event.deltaFrames = delay;
        event.midiData[0] = char(status);
        event.midiData[1] = char(data1);
        event.midiData[2] = char(data2);
        queued.push_back(event);
    }

    // Events in the host's memory.
    struct Batch {
        std::vector<VstMidiEvent> queued;
        std::vector<intptr_t> memory;
        VstEvents* events = nullptr;
    };

    Batch take_events() {
        Batch batch;
        batch.queued.swap(queued);
        const size_t size = sizeof(VstEvents) + batch.queued.size() * sizeof(void*);
        batch.memory.resize(size / sizeof(intptr_t) + 1);
        batch.events = new (batch.memory.data()) VstEvents;
        batch.events->numEvents = int32_t(batch.queued.size());
        for (size_t i = 0; i < batch.queued.size(); i++)
            reinterpret_cast<void**>(batch.events->events)[i] = &batch.queued[i];
        return batch;
    }

    // Hands over what is queued; the plug-in's answer.
    intptr_t send_events() {
        const Batch batch = take_events();
        return call(effProcessEvents, 0, 0, batch.events);
    }

    // One block, left and right one after the other.
    std::vector<float> block(int32_t frames) {
        send_events();
        std::vector<float> sound(size_t(2) * size_t(frames), 7.0F);
        float* outputs[] = {sound.data(), sound.data() + frames};
        effect->processReplacing(effect, nullptr, outputs, frames);
        return sound;
    }

    // Interleaved; `frames` in blocks of `block_size`.
    std::vector<float> render(int32_t frames, int32_t block_size = 256) {
        std::vector<float> sound;
        sound.reserve(size_t(2) * size_t(frames));
        for (int32_t done = 0; done < frames; done += block_size) {
            const int32_t count = std::min(block_size, frames - done);
            const std::vector<float> planes = block(count);
            for (int32_t i = 0; i < count; i++) {
                sound.push_back(planes[size_t(i)]);
                sound.push_back(planes[size_t(count) + size_t(i)]);
            }
        }
        return sound;
    }

    void set(int32_t index, float value) { effect->setParameter(effect, index, value); }
    float get(int32_t index) { return effect->getParameter(effect, index); }

    std::string save(bool program) {
        void* data = nullptr;
        const intptr_t size = call(effGetChunk, program ? 1 : 0, 0, &data);
        return {static_cast<const char*>(data), size_t(size)};
    }
    bool load(std::string chunk, bool program) {
        return call(effSetChunk, program ? 1 : 0, intptr_t(chunk.size()), chunk.data()) == 1;
    }

    AEffect* effect = nullptr;

  private:
    static intptr_t VST_CALL answer(AEffect*, int32_t opcode, int32_t, intptr_t, void*, float) {
        return opcode == audioMasterVersion ? kVstVersion : 0;
    }

    std::vector<VstMidiEvent> queued;
};

} // namespace tarquil
