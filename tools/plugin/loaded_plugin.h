// A VST 2.x instrument, loaded from its file and ready to play.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vst/abi/vst2.h"

namespace tarquil {

// One at a time: all share one PluginHost.
class LoadedPlugin {
  public:
    // Loads the file and opens the plug-in with program 0, at SAMPLE_RATE and with blocks of
    // `max_frames`.  BadInput when that file is no instrument for this processor.
    LoadedPlugin(const std::string& path, uint32_t max_frames);
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    [[nodiscard]] bool is_tarquil() const;

    // What the plug-in calls itself, else its file's path.
    std::string get_name();

    // Replaces the state of all programs, before start; false when the plug-in refuses it.
    bool set_state(std::string_view bank_chunk);

    // From here on it renders.
    void start();

    // The messages of the next block, in order, with times from the block's start.
    void send(const std::vector<VstMidiEvent>& messages);

    // Renders `num_samples` frames, at most `max_frames`, from the absolute sample `time` on as
    // interleaved stereo: its first two outputs, or its only one on both sides.  What is not finite
    // becomes 0; nothing is clipped.
    void render(float* pcm, uint32_t num_samples, uint32_t time);

  private:
    struct CloseModule {
        void operator()(void* handle) const;
    };

    intptr_t call(int32_t opcode, int32_t index = 0, intptr_t value = 0, void* ptr = nullptr,
                  float opt = 0.0F);
    void check() const;

    std::string path;
    std::unique_ptr<void, CloseModule> module;
    AEffect* effect = nullptr;
    bool is_started = false;
    std::vector<float> samples;  // of all inputs and outputs, one after the other
    std::vector<float*> inputs;  // silent
    std::vector<float*> outputs; // at least one
    std::vector<intptr_t> event_list;
};

} // namespace tarquil
