// The plug-in object: parameters, programs and saved states.

#include <optional>
#include <string>
#include <string_view>

#include "common/assertion.h"
#include "common/log/log.h"
#include "instrument/state_text.h"
#include "instrument/text_error.h"
#include "player/checked_replace.h"
#include "softsynth/parameters/controller_display.h"
#include "vst/abi/host_text.h"
#include "vst/tarq_vst.h"

namespace tarquil {

namespace {

std::string shown_value(int controller, int byte) {
    char text[kVstMaxParamStrLen];
    float2string(map_char_to_float(unsigned(controller), byte), text, sizeof(text));
    return text;
}

void copy_program_name(const std::string& name, char* text) {
    copy_host_text(text, name.empty() ? "(none)" : name, kVstMaxProgNameLen);
}

} // namespace

void TarqVST::setParameter(int32_t index, float value) {
    if (is_automatable_vst_param(index))
        set_controller(vst_param_to_controller(index), vst_value_to_byte(value));
}

float TarqVST::getParameter(int32_t index) {
    return byte_to_vst_value(get_controller(vst_param_to_controller(index)));
}

void TarqVST::getParameterName(int32_t index, char* text) {
    copy_host_text(text, host_parameter_key(index), kVstMaxParamStrLen);
}

void TarqVST::getParameterDisplay(int32_t index, char* text) {
    if (index == NO_VST_PARAM) {
        copy_host_text(text, "(none)", kVstMaxParamStrLen);
        return;
    }
    const int controller = vst_param_to_controller(index);
    copy_host_text(text, shown_value(controller, get_controller(controller)), kVstMaxParamStrLen);
}

void TarqVST::getParameterLabel(int32_t /*index*/, char* text) {
    copy_host_text(text, " none   ", kVstMaxParamStrLen);
}

bool TarqVST::canParameterBeAutomated(int32_t index) {
    return is_automatable_vst_param(index);
}

bool TarqVST::string2parameter(int32_t index, const char* text) {
    if (!canParameterBeAutomated(index))
        return false;
    const int controller = vst_param_to_controller(index);
    const std::optional<int> byte = parse_mapped_value(unsigned(controller), text);
    if (!byte)
        return false;
    set_controller(controller, *byte);
    return true;
}

void TarqVST::set_controller(int index, int value) {
    TARQ_ASSERT(index != CTRL_PITCH_BEND_MSB);
    TARQ_ASSERT(index != CTRL_PITCH_BEND_LSB);
    synth.set_controller(unsigned(index), value);
}

int TarqVST::get_controller(int index) {
    return synth.get_controller(unsigned(index));
}

void TarqVST::setProgram(int32_t program) {
    logPrintf("program changed to %ul\n", unsigned(program));
    synth.set_edited_program(unsigned(program));
}

void TarqVST::setProgramName(const char* name) {
    synth.set_program_name(current_program(), name);
}

void TarqVST::getProgramName(char* name) {
    copy_program_name(synth.program_name(current_program()), name);
}

bool TarqVST::getProgramNameIndexed(int32_t /*category*/, int32_t index, char* text) {
    TARQ_ASSERT(index >= 0);
    if (index >= NUM_PROGRAMS)
        return false;
    copy_program_name(synth.program_name(unsigned(index)), text);
    return true;
}

bool TarqVST::copyProgram(int32_t destination) {
    if (destination < 0 || destination >= NUM_PROGRAMS)
        return false;
    synth.load_instrument(unsigned(destination), synth.get_instrument(current_program()));
    return true;
}

void TarqVST::changeInstrument(int channel, int instrument, uint32_t time) {
    TARQ_ASSERT(channel >= 0 && channel < NUM_CHANNELS);
    TARQ_ASSERT(instrument >= 0 && instrument < NUM_PROGRAMS);
    synth.set_channel_program(unsigned(channel), unsigned(instrument), time);
}

int TarqVST::get_current_instrument(int channel) {
    TARQ_ASSERT(channel >= 0 && channel < NUM_CHANNELS);
    return int(synth.channel_program(unsigned(channel)));
}

int32_t TarqVST::getChunk(void** data, bool isPreset) {
    const LockHolder holder(chunk_lock);
    logPrintf("getChunk called, data is %p, isPreset is %d\n", static_cast<void*>(data),
              int(isPreset));
    chunk.clear();
    if (isPreset) {
        const int error = save_curr_instrument(chunk);
        if (error != 0) {
            logPrintf("getChunk: save_current_instrument failed with code %d\n", error);
            return 0;
        }
    } else {
        chunk = synth.save_state();
    }
    *data = chunk.data();
    return int32_t(chunk.size());
}

int32_t TarqVST::setChunk(const void* data, int32_t byteSize, bool isPreset) {
    logPrintf("setChunk called, data is %p, byteSize is %d, isPreset is %d\n", data, int(byteSize),
              int(isPreset));
    const std::string_view bytes(static_cast<const char*>(data), size_t(byteSize));
    const int error = isPreset ? load_curr_instrument_from_string(bytes) : synth.load_state(bytes);
    if (error != 0) {
        logPrintf("setChunk: %s%s failed with code %d\n",
                  isPreset ? "load_curr_instrument" : "load_bank",
                  is_image_state(bytes) ? "" : "_from_string", error);
        return 0;
    }
    logPrintf("setChunk succeeded\n");
    return 1;
}

int TarqVST::load_curr_instrument(const std::string& path) {
    return replace_program_by_file(synth, path);
}

int TarqVST::load_curr_instrument_from_string(std::string_view text) {
    return replace_program(synth, text);
}

int TarqVST::save_curr_instrument(std::string& text) {
    text = synth.get_instrument(current_program()).save_to_string();
    return 0;
}

int TarqVST::load_bank(const std::string& path) {
    return replace_bank_by_file(synth, path);
}

int TarqVST::load_bank_from_string(std::string_view text) {
    return replace_bank(synth, text);
}

int TarqVST::save_bank(std::string& text) {
    return synth.get_bank().text_save_to_string(text);
}

} // namespace tarquil
