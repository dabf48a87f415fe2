// The operations that version 2 of the interface added.

#include "vst/abi/audio_effect_x.h"

namespace tarquil {

intptr_t AudioEffectX::dispatcher(int32_t opcode, int32_t index, intptr_t value, void* ptr,
                                  float opt) {
    auto* text = static_cast<char*>(ptr);
    auto* properties = static_cast<VstPinProperties*>(ptr);
    switch (opcode) {
    case effProcessEvents:
        return ptr == nullptr ? 0 : processEvents(static_cast<const VstEvents*>(ptr));
    case effCanBeAutomated:
        return is_parameter(index) && canParameterBeAutomated(index);
    case effString2Parameter:
        if (text == nullptr)
            return 1;
        return is_parameter(index) && string2parameter(index, text);
    case effGetProgramNameIndexed:
        return text != nullptr && is_program(index) &&
               getProgramNameIndexed(int32_t(value), index, text);
    case effCopyProgram:
        return is_program(index) && copyProgram(index);
    case effGetInputProperties:
        return properties != nullptr && getInputProperties(index, properties);
    case effGetOutputProperties:
        return properties != nullptr && getOutputProperties(index, properties);
    case effGetPlugCategory:
        return (getAeffect()->flags & effFlagsIsSynth) != 0 ? kPlugCategSynth : 0;
    case effGetEffectName:
        return text != nullptr && getEffectName(text);
    case effGetVendorString:
        return text != nullptr && getVendorString(text);
    case effGetProductString:
        return text != nullptr && getProductString(text);
    case effGetVendorVersion:
        return getVendorVersion();
    case effCanDo:
        return text == nullptr ? 0 : canDo(text);
    case effGetTailSize:
        return getTailSize();
    case effKeysRequired:
        return 1; // the window works without the host's keys
    case effGetVstVersion:
        return kVstVersion;
    case effBeginSetProgram:
        return beginSetProgram();
    case effEndSetProgram:
        return endSetProgram();
    case effGetNumMidiInputChannels:
        return getNumMidiInputChannels();
    default:
        return AudioEffect::dispatcher(opcode, index, value, ptr, opt);
    }
}

} // namespace tarquil
