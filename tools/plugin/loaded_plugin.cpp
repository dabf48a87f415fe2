// A VST 2.x instrument, loaded from its file and ready to play.

#include "tools/plugin/loaded_plugin.h"

#include <dlfcn.h>

#include <cmath>
#include <cstring>
#include <filesystem>

#include "common/failure.h"
#include "softsynth/parameters/constants.h"
#include "tools/plugin/plugin_host.h"
#include "vst/plugin_parameters.h"

namespace tarquil {

namespace {

using EntryPoint = AEffect*(VST_CALL*)(audioMasterCallback host);

// More would be a damaged record.
constexpr int32_t MAX_CHANNELS = 1024;

// Texts that overrun what is documented are common.
constexpr size_t TEXT_ROOM = 1024;

// The linker's reason without the path that it begins with.
std::string linker_reason(const std::string& path) {
    const char* error = dlerror();
    std::string reason = error == nullptr ? "cannot be loaded" : error;
    if (reason.starts_with(path + ": "))
        reason.erase(0, path.size() + 2);
    return reason;
}

float finite_or_0(float sample) {
    return std::isfinite(sample) ? sample : 0.0F;
}

} // namespace

void LoadedPlugin::CloseModule::operator()(void* handle) const {
    dlclose(handle);
}

LoadedPlugin::LoadedPlugin(const std::string& plugin_path, uint32_t max_frames)
    : path(plugin_path) {
    std::error_code error;
    // A pipe or a device would hold the linker up.
    if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error))
        throw BadInput(path + ": is no file");
    // Without a folder the linker would look for a system library of that name.
    const std::string place = std::filesystem::absolute(path, error).string();
    module.reset(dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL));
    if (module == nullptr)
        throw BadInput(path + ": " + linker_reason(place));
    void* entry = dlsym(module.get(), "VSTPluginMain");
    if (entry == nullptr)
        entry = dlsym(module.get(), "main");
    if (entry == nullptr)
        throw BadInput(path + ": is no VST 2 plug-in");
    PluginHost::set_block_size(max_frames);
    PluginHost::set_time(0);
    effect = reinterpret_cast<EntryPoint>(entry)(PluginHost::answer);
    try {
        check();
    } catch (const Failure&) {
        if (effect != nullptr && effect->magic == kEffectMagic && effect->dispatcher != nullptr)
            call(effClose);
        throw;
    }

    call(effOpen);
    call(effSetSampleRate, 0, 0, nullptr, float(SAMPLE_RATE));
    call(effSetBlockSize, 0, intptr_t(max_frames));
    if (effect->numPrograms > 0)
        call(effSetProgram);
    const auto num_inputs = size_t(effect->numInputs);
    const auto num_outputs = size_t(effect->numOutputs);
    samples.resize((num_inputs + num_outputs) * max_frames);
    for (size_t i = 0; i < num_inputs + num_outputs; i++)
        (i < num_inputs ? inputs : outputs).push_back(&samples[i * max_frames]);
}

void LoadedPlugin::check() const {
    if (effect == nullptr)
        throw Failure(STATUS_CANNOT, path + ": the plug-in does not start");
    if (effect->magic != kEffectMagic || effect->dispatcher == nullptr)
        throw BadInput(path + ": is no VST 2 plug-in");
    if ((effect->flags & effFlagsIsSynth) == 0)
        throw BadInput(path + ": is no instrument");
    if ((effect->flags & effFlagsCanReplacing) == 0 || effect->processReplacing == nullptr ||
        effect->numOutputs < 1 || effect->numOutputs > MAX_CHANNELS || effect->numInputs < 0 ||
        effect->numInputs > MAX_CHANNELS)
        throw BadInput(path + ": has no outputs that can be rendered");
}

LoadedPlugin::~LoadedPlugin() {
    if (is_started) {
        call(effStopProcess);
        call(effMainsChanged, 0, 0);
    }
    call(effClose);
}

intptr_t LoadedPlugin::call(int32_t opcode, int32_t index, intptr_t value, void* ptr, float opt) {
    return effect->dispatcher(effect, opcode, index, value, ptr, opt);
}

bool LoadedPlugin::is_tarquil() const {
    return effect->uniqueID == TARQUIL_UNIQUE_ID;
}

std::string LoadedPlugin::get_name() {
    char text[TEXT_ROOM] = {};
    call(effGetEffectName, 0, 0, text);
    return text[0] == '\0' ? path : text;
}

bool LoadedPlugin::set_state(std::string_view bank_chunk) {
    // The interface takes a pointer that could be written through.
    std::string chunk(bank_chunk);
    return call(effSetChunk, 0, intptr_t(chunk.size()), chunk.data()) != 0;
}

void LoadedPlugin::start() {
    is_started = true;
    call(effMainsChanged, 0, 1);
    call(effStartProcess);
}

void LoadedPlugin::send(const std::vector<VstMidiEvent>& messages) {
    // The count and a word that is the host's, then the pointers.
    constexpr size_t HEAD = offsetof(VstEvents, events) / sizeof(intptr_t);
    static_assert(HEAD * sizeof(intptr_t) == offsetof(VstEvents, events));
    event_list.assign(HEAD, 0);
    const auto count = int32_t(messages.size());
    std::memcpy(event_list.data(), &count, sizeof(count));
    for (const VstMidiEvent& message : messages)
        event_list.push_back(reinterpret_cast<intptr_t>(&message));
    call(effProcessEvents, 0, 0, event_list.data());
}

void LoadedPlugin::render(float* pcm, uint32_t num_samples, uint32_t time) {
    PluginHost::set_time(time);
    effect->processReplacing(effect, inputs.data(), outputs.data(), int32_t(num_samples));
    const float* left = outputs.front();
    const float* right = outputs.size() > 1 ? outputs[1] : left;
    for (uint32_t i = 0; i < num_samples; i++) {
        pcm[2 * i] = finite_or_0(left[i]);
        pcm[2 * i + 1] = finite_or_0(right[i]);
    }
}

} // namespace tarquil
