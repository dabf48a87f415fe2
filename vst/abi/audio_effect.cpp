// A plug-in as an object: the basic operations, and the record that the host calls them by.

#include "vst/abi/audio_effect.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

AudioEffect* object_of(AEffect* effect) {
    return effect == nullptr ? nullptr : static_cast<AudioEffect*>(effect->object);
}

bool has_channels(const AEffect& effect, float** outputs, int32_t frames) {
    return frames > 0 && outputs != nullptr &&
           std::none_of(outputs, outputs + effect.numOutputs,
                        [](const float* output) { return output == nullptr; });
}

} // namespace

AudioEffect::AudioEffect(audioMasterCallback host, int32_t num_programs, int32_t num_params)
    : audioMaster(host) {
    cEffect.dispatcher = call_dispatcher;
    cEffect.process = call_process;
    cEffect.processReplacing = call_process_replacing;
    cEffect.setParameter = call_set_parameter;
    cEffect.getParameter = call_get_parameter;
    cEffect.numPrograms = num_programs;
    cEffect.numParams = num_params;
    cEffect.object = this;
}

void AudioEffect::set_flag(int32_t flag, bool state) {
    cEffect.flags = state ? cEffect.flags | flag : cEffect.flags & ~flag;
}

void AudioEffect::setEditor(AEffEditor* new_editor) {
    editor = new_editor;
    set_flag(effFlagsHasEditor, editor != nullptr);
}

intptr_t AudioEffect::call_host(int32_t opcode, int32_t index, intptr_t value, void* ptr,
                                float opt) {
    return audioMaster == nullptr ? 0 : audioMaster(&cEffect, opcode, index, value, ptr, opt);
}

intptr_t AudioEffect::call_dispatcher(AEffect* effect, int32_t opcode, int32_t index,
                                      intptr_t value, void* ptr, float opt) {
    AudioEffect* object = object_of(effect);
    if (object == nullptr)
        return 0;
    if (opcode == effClose) {
        object->close();
        delete object;
        return 1;
    }
    return object->dispatcher(opcode, index, value, ptr, opt);
}

void AudioEffect::call_process(AEffect* effect, float** inputs, float** outputs, int32_t frames) {
    if (AudioEffect* object = object_of(effect); has_channels(*effect, outputs, frames))
        object->process(inputs, outputs, frames);
}

void AudioEffect::call_process_replacing(AEffect* effect, float** inputs, float** outputs,
                                         int32_t frames) {
    if (AudioEffect* object = object_of(effect); has_channels(*effect, outputs, frames))
        object->processReplacing(inputs, outputs, frames);
}

void AudioEffect::call_set_parameter(AEffect* effect, int32_t index, float value) {
    AudioEffect* object = object_of(effect);
    if (object->is_parameter(index) && !std::isnan(value))
        object->setParameter(index, std::clamp(value, 0.0F, 1.0F));
}

float AudioEffect::call_get_parameter(AEffect* effect, int32_t index) {
    AudioEffect* object = object_of(effect);
    return object->is_parameter(index) ? object->getParameter(index) : 0.0F;
}

intptr_t AudioEffect::dispatcher(int32_t opcode, int32_t index, intptr_t value, void* ptr,
                                 float opt) {
    auto* text = static_cast<char*>(ptr);
    switch (opcode) {
    case effOpen:
        open();
        return 1;
    case effSetProgram:
        if (is_program(value))
            setProgram(int32_t(value));
        return 0;
    case effGetProgram:
        return getProgram();
    case effSetProgramName:
        if (text != nullptr)
            setProgramName(text);
        return 0;
    case effGetProgramName:
        if (text != nullptr)
            getProgramName(text);
        return 0;
    case effGetParamLabel:
        if (text != nullptr && is_parameter(index))
            getParameterLabel(index, text);
        return 0;
    case effGetParamDisplay:
        if (text != nullptr && is_parameter(index))
            getParameterDisplay(index, text);
        return 0;
    case effGetParamName:
        if (text != nullptr && is_parameter(index))
            getParameterName(index, text);
        return 0;
    case effSetSampleRate:
        setSampleRate(opt);
        return 0;
    case effSetBlockSize:
        setBlockSize(int32_t(value));
        return 0;
    case effMainsChanged:
        if (value != 0)
            resume();
        else
            suspend();
        return 0;
    case effEditGetRect:
        return ptr != nullptr && editor != nullptr && editor->getRect(static_cast<ERect**>(ptr));
    case effEditOpen:
        return editor != nullptr && editor->open(ptr);
    case effEditClose:
        if (editor != nullptr)
            editor->close();
        return 0;
    case effEditIdle:
        if (editor != nullptr)
            editor->idle();
        return 0;
    case effIdentify:
        return four_characters("NvEf");
    case effGetChunk:
        return ptr == nullptr ? 0 : getChunk(static_cast<void**>(ptr), index != 0);
    case effSetChunk:
        if (ptr == nullptr || value <= 0 || value > INT32_MAX) // nothing is no state
            return 0;
        return setChunk(ptr, int32_t(value), index != 0);
    default:
        return 0;
    }
}

} // namespace tarquil
