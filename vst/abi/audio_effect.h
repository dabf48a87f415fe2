// A plug-in as an object: the basic operations, and the record that the host calls them by.
//
// The functions in the record are the outermost layer: they look over every index, pointer and
// value that a host sends, so that an operation only ever sees what it is defined for.

#pragma once

#include <atomic>
#include <memory>

#include "vst/abi/aeff_editor.h"
#include "vst/abi/vst2.h"

namespace tarquil {

class AudioEffect {
  public:
    // `host` may be null: then nobody is told of edits.
    AudioEffect(audioMasterCallback host, int32_t num_programs, int32_t num_params);
    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;
    virtual ~AudioEffect() = default;

    AEffect* getAeffect() { return &cEffect; }

    virtual void open() {}
    virtual void close() {}
    virtual void suspend() {}
    virtual void resume() {}

    // Hz.
    virtual void setSampleRate(float rate) { sampleRate = rate; }
    // The most frames that the host will ask for at once.
    virtual void setBlockSize(int32_t frames) { blockSize = frames; }

    // `outputs` point to `frames` samples for each output.
    virtual void process(float** inputs, float** outputs, int32_t frames) = 0;
    virtual void processReplacing(float** inputs, float** outputs, int32_t frames) = 0;

    // `index` 0 up to the number of parameters, `value` 0..1.
    virtual void setParameter(int32_t index, float value) = 0;
    virtual float getParameter(int32_t index) = 0;
    // `text` has room for kVstMaxParamStrLen bytes.
    virtual void getParameterName(int32_t index, char* text) = 0;
    virtual void getParameterDisplay(int32_t index, char* text) = 0;
    virtual void getParameterLabel(int32_t index, char* text) = 0;

    // `program` 0 up to the number of programs.
    virtual void setProgram(int32_t program) { curProgram = program; }
    virtual int32_t getProgram() { return curProgram; }
    // `name` has room for kVstMaxProgNameLen bytes in getProgramName.
    virtual void setProgramName(const char* name) = 0;
    virtual void getProgramName(char* name) = 0;

    // Points `*data` at the state, which stays valid until the next call; returns its bytes.
    virtual int32_t getChunk(void** data, bool isPreset) = 0;
    // 1 on success.
    virtual int32_t setChunk(const void* data, int32_t byteSize, bool isPreset) = 0;

    // Tells the host that the user has moved a parameter.
    void automate(int32_t index, float value) {
        call_host(audioMasterAutomate, index, 0, nullptr, value);
    }

  protected:
    virtual intptr_t dispatcher(int32_t opcode, int32_t index, intptr_t value, void* ptr,
                                float opt);

    // The host's answer, 0 without a host.
    intptr_t call_host(int32_t opcode, int32_t index = 0, intptr_t value = 0, void* ptr = nullptr,
                       float opt = 0.0F);

    [[nodiscard]] bool has_host() const { return audioMaster != nullptr; }
    [[nodiscard]] bool is_parameter(int32_t index) const {
        return index >= 0 && index < cEffect.numParams;
    }
    [[nodiscard]] bool is_program(intptr_t index) const {
        return index >= 0 && index < cEffect.numPrograms;
    }

    void setNumInputs(int32_t inputs) { cEffect.numInputs = inputs; }
    void setNumOutputs(int32_t outputs) { cEffect.numOutputs = outputs; }
    void setUniqueID(int32_t id) { cEffect.uniqueID = id; }
    void setVersion(int32_t version) { cEffect.version = version; }
    void canProcessReplacing(bool state) { set_flag(effFlagsCanReplacing, state); }
    void programsAreChunks(bool state) { set_flag(effFlagsProgramChunks, state); }
    void isSynth(bool state) { set_flag(effFlagsIsSynth, state); }

    // Null: the plug-in has no window.
    void setEditor(AEffEditor* new_editor);

    float sampleRate = 44100.0F;
    int32_t blockSize = 1024;
    std::atomic<int32_t> curProgram{0};
    AEffEditor* editor = nullptr;

  private:
    void set_flag(int32_t flag, bool state);

    static intptr_t VST_CALL call_dispatcher(AEffect* effect, int32_t opcode, int32_t index,
                                             intptr_t value, void* ptr, float opt);
    static void VST_CALL call_process(AEffect* effect, float** inputs, float** outputs,
                                      int32_t frames);
    static void VST_CALL call_process_replacing(AEffect* effect, float** inputs, float** outputs,
                                                int32_t frames);
    static void VST_CALL call_set_parameter(AEffect* effect, int32_t index, float value);
    static float VST_CALL call_get_parameter(AEffect* effect, int32_t index);

    audioMasterCallback audioMaster;
    AEffect cEffect;
};

} // namespace tarquil
