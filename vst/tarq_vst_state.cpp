// The plug-in object: parameters, programs and saved states.

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

#include "common/assertion.h"
#include "common/log/log.h"
#include "common/number_text.h"
#include "instrument/checked_load.h"
#include "instrument/names.h"
#include "instrument/state_text.h"
#include "instrument/text_error.h"
#include "vst/abi/host_text.h"
#include "vst/tarq_vst.h"

namespace tarquil {

namespace {

// A line at the end of a saved state, which a bank's reader passes over: the programs of the
// channels, when they are not those that a new plug-in starts with.
constexpr std::string_view CHANNEL_PROGRAMS = "channel_programs = ";

std::string shown_value(int controller, int byte) {
    char text[kVstMaxParamStrLen];
    float2string(map_char_to_float(unsigned(controller), byte), text, sizeof(text));
    return text;
}

void copy_instrument_name(const Instrument& instrument, char* text) {
    const std::string& name = instrument.get_name();
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
    copy_host_text(text, vst_param_name(index), kVstMaxParamStrLen);
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
    const std::string_view typed = text;
    const size_t first = typed.find_first_not_of(" \t");
    if (first == std::string_view::npos ||
        std::string_view("+-.0123456789").find(typed[first]) == std::string_view::npos)
        return false;
    const double wanted = text_to_number(typed);
    const int controller = vst_param_to_controller(index);
    int nearest = 0;
    double smallest = INFINITY;
    for (int byte = 0; byte < 128; byte++) {
        const double distance =
            std::fabs(double(map_char_to_float(unsigned(controller), byte)) - wanted);
        if (distance < smallest) {
            smallest = distance;
            nearest = byte;
        }
    }
    set_controller(controller, nearest);
    return true;
}

void TarqVST::set_controller(int index, int value) {
    TARQ_ASSERT(index != CTRL_PITCH_BEND_MSB);
    TARQ_ASSERT(index != CTRL_PITCH_BEND_LSB);
    const LockHolder holder(synth_lock);
    const auto controller = unsigned(index);
    value = filter_controller(controller, value);
    midi_event event;
    if (is_global_controller(controller)) {
        settings.set_global_controller(controller, value);
        settings.emit_single_global_controller(&event, controller, curr_time);
        if (!events.push({&event, 1}))
            globals_wait = true;
    } else {
        const Instrument& instrument = current_instrument();
        current_instrument().set_controller(controller, value);
        for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
            if (current_instruments[channel] != unsigned(getProgram()))
                continue;
            instrument.emit_single_controller(&event, channel, controller, curr_time);
            if (!events.push({&event, 1}))
                waiting_channels |= 1U << channel;
        }
    }
    update_editor();
}

void TarqVST::set_program_controller(int index, int value) {
    if (index != CTRL_PITCH_BEND_MSB && index != CTRL_PITCH_BEND_LSB) {
        set_controller(index, value);
        return;
    }
    const LockHolder holder(synth_lock);
    Instrument& instrument = current_instrument();
    instrument.set_controller(unsigned(index), value);
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        if (current_instruments[channel] != unsigned(getProgram()))
            continue;
        midi_event halves[2];
        instrument.emit_single_controller(&halves[0], channel, CTRL_PITCH_BEND_MSB, curr_time);
        instrument.emit_single_controller(&halves[1], channel, CTRL_PITCH_BEND_LSB, curr_time);
        if (!events.push(halves))
            waiting_channels |= 1U << channel;
    }
    update_editor();
}

int TarqVST::get_controller(int index) {
    const LockHolder holder(synth_lock);
    const auto controller = unsigned(index);
    return is_global_controller(controller) ? settings.get_global_controller(controller)
                                             : current_instrument().get_controller(controller);
}

void TarqVST::update_editor() {
    if (tarq_editor != nullptr && tarq_editor->isOpen())
        tarq_editor->tarq_update();
}

void TarqVST::setProgram(int32_t program) {
    logPrintf("program changed to %ul\n", unsigned(program));
    curProgram = program;
    update_editor();
}

void TarqVST::setProgramName(const char* name) {
    const LockHolder holder(synth_lock);
    const std::string text = storable_text(name);
    if (!text.empty())
        current_instrument().set_name(text);
    update_editor();
}

void TarqVST::getProgramName(char* name) {
    const LockHolder holder(synth_lock);
    copy_instrument_name(current_instrument(), name);
}

bool TarqVST::getProgramNameIndexed(int32_t /*category*/, int32_t index, char* text) {
    const LockHolder holder(synth_lock);
    TARQ_ASSERT(index >= 0);
    if (index >= NUM_PROGRAMS)
        return false;
    copy_instrument_name(settings.get_instrument(unsigned(index)), text);
    return true;
}

bool TarqVST::copyProgram(int32_t destination) {
    const LockHolder holder(synth_lock);
    if (destination < 0 || destination >= NUM_PROGRAMS)
        return false;
    settings.get_instrument(unsigned(destination)) = Instrument(current_instrument());
    follow_load();
    return true;
}

int TarqVST::get_current_instrument(int channel) {
    const LockHolder holder(synth_lock);
    TARQ_ASSERT(channel >= 0 && channel < NUM_CHANNELS);
    return int(current_instruments[channel]);
}

int32_t TarqVST::getChunk(void** data, bool isPreset) {
    const LockHolder holder(synth_lock);
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
        const int error = save_bank(chunk);
        if (error != 0) {
            logPrintf("getChunk: save_bank failed with code %d\n", error);
            return 0;
        }
        save_channel_programs(chunk);
    }
    *data = chunk.data();
    return int32_t(chunk.size());
}

int32_t TarqVST::setChunk(const void* data, int32_t byteSize, bool isPreset) {
    const LockHolder holder(synth_lock);
    logPrintf("setChunk called, data is %p, byteSize is %d, isPreset is %d\n", data, int(byteSize),
              int(isPreset));
    const std::string_view bytes(static_cast<const char*>(data), size_t(byteSize));
    const auto text = find_state_text(bytes, isPreset ? StateKind::PROGRAM : StateKind::BANK);
    int error = CANNOT_OPEN;
    if (text)
        error = isPreset ? load_curr_instrument_from_string(*text) : load_bank_from_string(*text);
    if (error != 0) {
        logPrintf("setChunk: %s%s failed with code %d\n",
                  isPreset ? "load_curr_instrument" : "load_bank",
                  is_image_state(bytes) ? "" : "_from_string", error);
        return 0;
    }
    if (!isPreset && !is_image_state(bytes))
        load_channel_programs(bytes);
    logPrintf("setChunk succeeded\n");
    return 1;
}

void TarqVST::save_channel_programs(std::string& text) const {
    bool is_usual = true;
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        is_usual = is_usual && current_instruments[channel] == channel;
    if (is_usual)
        return;
    text += CHANNEL_PROGRAMS;
    for (const unsigned program : current_instruments)
        text += std::to_string(program) + " ";
    text.back() = '\n';
}

void TarqVST::load_channel_programs(std::string_view text) {
    const size_t line = text.rfind(CHANNEL_PROGRAMS);
    if (line == std::string_view::npos || line == 0 || text[line - 1] != '\n')
        return;
    const char* next = text.data() + line + CHANNEL_PROGRAMS.size();
    for (int channel = 0; channel < NUM_CHANNELS; channel++) {
        int program = -1;
        next = std::from_chars(next, text.data() + text.size(), program).ptr;
        if (program < 0 || program >= NUM_PROGRAMS)
            return; // damaged: the other channels keep theirs
        if (program != get_current_instrument(channel))
            changeInstrument(channel, program, curr_time);
        if (next != text.data() + text.size())
            next++;
    }
}

void TarqVST::follow_load() {
    refresh_synth();
    update_editor();
}

int TarqVST::load_curr_instrument(const std::string& path) {
    const LockHolder holder(synth_lock);
    const int error = load_instrument_checked(current_instrument(), path);
    if (error == 0)
        follow_load();
    return error;
}

int TarqVST::load_curr_instrument_from_string(std::string_view text) {
    const LockHolder holder(synth_lock);
    const int error = load_instrument_checked_from_string(current_instrument(), text);
    if (error == 0)
        follow_load();
    return error;
}

int TarqVST::save_curr_instrument(std::string& text) {
    const LockHolder holder(synth_lock);
    text = current_instrument().save_to_string();
    return 0;
}

int TarqVST::load_bank(const std::string& path) {
    const LockHolder holder(synth_lock);
    const int error = load_bank_checked(settings, path);
    if (error == 0)
        follow_load();
    return error;
}

int TarqVST::load_bank_from_string(std::string_view text) {
    const LockHolder holder(synth_lock);
    const int error = load_bank_checked_from_string(settings, text);
    if (error == 0)
        follow_load();
    return error;
}

int TarqVST::save_bank(std::string& text) {
    const LockHolder holder(synth_lock);
    return settings.text_save_to_string(text);
}

void TarqVST::set_bank(const TarqSettings& bank) {
    const LockHolder holder(synth_lock);
    settings = bank;
    follow_load();
}

TarqSettings TarqVST::get_bank() {
    const LockHolder holder(synth_lock);
    return settings;
}

void TarqVST::set_instrument(int number, const Instrument& instrument) {
    const LockHolder holder(synth_lock);
    settings.get_instrument(unsigned(number)) = instrument;
    follow_load();
}

void TarqVST::set_song(const std::string& title, const std::string& author) {
    const LockHolder holder(synth_lock);
    settings.set_song_title(storable_text(title));
    settings.set_song_author(storable_text(author));
    update_editor();
}

Instrument TarqVST::get_instrument(int number) {
    const LockHolder holder(synth_lock);
    return settings.get_instrument(unsigned(number));
}

} // namespace tarquil
