// The part of the plug-in that hosts show: MIDI, units and programs.

#include <cstring>

#include "formats/vst3/controller.h"
#include "formats/vst3/parameters.h"
#include "formats/vst3/text.h"

namespace tarquil::vst3 {

namespace {

constexpr size_t NAME_ROOM = sizeof(String128) / sizeof(char16_t);

// Each channel has a list of its own, with the same programs.
bool is_program(int32_t list, int32_t program) {
    return list >= unit_of_channel(0) && list <= unit_of_channel(NUM_CHANNELS - 1) &&
           program >= 0 && program < int32_t(MAX_INSTRUMENTS);
}

} // namespace

Result Controller::get_assignment(int32_t bus, int16_t channel, int16_t number, ParameterId* id) {
    if (bus != 0 || channel < 0 || channel >= int(NUM_CHANNELS) || number < 0 || id == nullptr)
        return NO;
    auto found = midi_parameter_id(unsigned(channel), unsigned(number));
    if (!found)
        found = learning_parameter_id(unsigned(number));
    if (!found)
        return NO;
    *id = *found;
    return OK;
}

int32_t Controller::get_unit_count() {
    return num_units();
}

Result Controller::get_unit_info(int32_t index, UnitInfo* info) {
    if (index < 0 || index >= num_units() || info == nullptr)
        return BAD_ARGUMENT;
    vst3::get_unit_info(index, *info);
    return OK;
}

int32_t Controller::get_program_list_count() {
    return int32_t(NUM_CHANNELS);
}

Result Controller::get_program_list_info(int32_t index, ProgramListInfo* info) {
    if (index < 0 || index >= get_program_list_count() || info == nullptr)
        return BAD_ARGUMENT;
    *info = {.id = unit_of_channel(unsigned(index)),
             .name = {},
             .num_programs = int32_t(MAX_INSTRUMENTS)};
    put_text(info->name, "Programs");
    return OK;
}

Result Controller::get_program_name(int32_t list, int32_t program, char16_t* name) {
    if (!is_program(list, program) || name == nullptr)
        return BAD_ARGUMENT;
    put_text(name, NAME_ROOM, hosted.player().program_name(unsigned(program)));
    return OK;
}

Result Controller::get_program_info(int32_t /*list*/, int32_t /*program*/,
                                    const char* /*attribute*/, char16_t* /*value*/) {
    return NO;
}

Result Controller::has_program_pitch_names(int32_t /*list*/, int32_t /*program*/) {
    return NO;
}

Result Controller::get_program_pitch_name(int32_t /*list*/, int32_t /*program*/, int16_t /*key*/,
                                          char16_t* /*name*/) {
    return NO;
}

Result Controller::select_unit(int32_t unit) {
    if (unit < 0 || unit >= num_units())
        return BAD_ARGUMENT;
    selected_unit = unit;
    return OK;
}

Result Controller::get_unit_by_bus(int32_t media_type, int32_t direction, int32_t bus,
                                   int32_t channel, int32_t* unit) {
    if (media_type != EVENT || direction != INPUT || bus != 0 || channel < 0 ||
        channel >= int32_t(NUM_CHANNELS) || unit == nullptr)
        return NO;
    *unit = unit_of_channel(unsigned(channel));
    return OK;
}

Result Controller::set_unit_program_data(int32_t /*list_or_unit*/, int32_t /*program*/,
                                         Stream* /*stream*/) {
    return NOT_IMPLEMENTED;
}

} // namespace tarquil::vst3
