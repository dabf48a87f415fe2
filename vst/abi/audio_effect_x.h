// The operations that version 2 of the interface added.

#pragma once

#include "vst/abi/audio_effect.h"

namespace tarquil {

class AudioEffectX : public AudioEffect {
  public:
    using AudioEffect::AudioEffect;

    // 0 asks the host to send no more of this block's events.
    virtual int32_t processEvents(const VstEvents* /*events*/) { return 0; }

    virtual bool canParameterBeAutomated(int32_t /*index*/) { return true; }
    // Sets the parameter to the value that `text` says; false when it says none.
    virtual bool string2parameter(int32_t /*index*/, const char* /*text*/) { return false; }

    // `text` has room for kVstMaxProgNameLen bytes; false when there is no such program.
    virtual bool getProgramNameIndexed(int32_t /*category*/, int32_t /*index*/, char* /*text*/) {
        return false;
    }
    virtual bool copyProgram(int32_t /*destination*/) { return false; }
    virtual bool beginSetProgram() { return true; }
    virtual bool endSetProgram() { return true; }

    virtual bool getInputProperties(int32_t /*index*/, VstPinProperties* /*properties*/) {
        return false;
    }
    virtual bool getOutputProperties(int32_t /*index*/, VstPinProperties* /*properties*/) {
        return false;
    }

    // The buffers have room for kVstMaxEffectNameLen, kVstMaxVendorStrLen and kVstMaxProductStrLen.
    virtual bool getEffectName(char* name) = 0;
    virtual bool getVendorString(char* text) = 0;
    virtual bool getProductString(char* text) = 0;
    virtual int32_t getVendorVersion() = 0;

    // 1 yes, 0 not known, -1 no.
    virtual int32_t canDo(const char* text) = 0;

    // In samples; 0: not known.
    virtual int32_t getTailSize() { return 0; }
    virtual int32_t getNumMidiInputChannels() { return 0; }

    // A gesture of the user on one parameter begins and ends.
    void beginEdit(int32_t index) { call_host(audioMasterBeginEdit, index); }
    void endEdit(int32_t index) { call_host(audioMasterEndEdit, index); }

    // Asks the host to read names and values anew, and whether it will take a window of that size.
    void updateDisplay() { call_host(audioMasterUpdateDisplay); }
    bool sizeWindow(int32_t width, int32_t height) {
        return call_host(audioMasterSizeWindow, width, height) != 0;
    }

  protected:
    intptr_t dispatcher(int32_t opcode, int32_t index, intptr_t value, void* ptr,
                        float opt) override;
};

} // namespace tarquil
