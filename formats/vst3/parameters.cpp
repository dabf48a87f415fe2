// The parameters: those that every format shows, then hidden ones that stand for MIDI messages.

#include "formats/vst3/parameters.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "formats/vst3/text.h"
#include "softsynth/parameters/constants.h"

namespace tarquil::vst3 {

namespace {

constexpr ParameterId FIRST_MIDI_ID = 0x10000;
constexpr ParameterId IDS_PER_CHANNEL = 0x100;

// What files and keyboards send and the General MIDI dialect answers to; by the registered and
// unregistered numbers among them everything else is reached.
constexpr uint8_t MAPPED[] = {0,          1,
                              5,          6,
                              7,          10,
                              11,         32,
                              38,         64,
                              65,         66,
                              67,         71,
                              72,         73,
                              74,         75,
                              76,         77,
                              78,         84,
                              91,         93,
                              96,         97,
                              98,         99,
                              100,        101,
                              120,        121,
                              123,        124,
                              125,        126,
                              127,        MAPPED_PRESSURE,
                              MAPPED_BEND};

constexpr int32_t PROGRAM_UNIT = unit_of_channel(NUM_CHANNELS);
constexpr int32_t BANK_UNIT = PROGRAM_UNIT + 1;
constexpr int32_t FIRST_GROUP_UNIT = BANK_UNIT + 1;

bool is_in_bank(std::string_view group) {
    return group.starts_with("Bank/");
}

bool is_channel_program(const HostControl& control) {
    return control.kind == HostControl::Kind::CHANNEL_PROGRAM;
}

// The groups of the controllers, in the order in which they come.
const std::vector<std::string>& groups() {
    static const std::vector<std::string> all = [] {
        std::vector<std::string> found;
        for (const HostControl& control : host_controls()) {
            if (control.kind == HostControl::Kind::CONTROLLER &&
                std::ranges::find(found, control.group) == found.end())
                found.push_back(control.group);
        }
        return found;
    }();
    return all;
}

int32_t unit_of(const HostControl& control) {
    if (is_channel_program(control))
        return unit_of_channel(control.number);
    const auto group = std::ranges::find(groups(), control.group);
    return group == groups().end() ? ROOT_UNIT
                                   : FIRST_GROUP_UNIT + int32_t(group - groups().begin());
}

int32_t flags_of(const HostControl& control) {
    switch (control.kind) {
    case HostControl::Kind::CHANNEL_PROGRAM:
        return CAN_AUTOMATE | IS_LIST | IS_PROGRAM_CHANGE;
    case HostControl::Kind::EDITED_PROGRAM:
        return IS_LIST;
    default:
        return control.is_list ? CAN_AUTOMATE | IS_LIST : int32_t(CAN_AUTOMATE);
    }
}

std::string midi_name(unsigned number) {
    if (number == MAPPED_PRESSURE)
        return "pressure";
    if (number == MAPPED_BEND)
        return "pitch bend";
    return "controller " + std::to_string(number);
}

void get_midi_info(unsigned index, ParameterInfo& info) {
    const unsigned channel = index / unsigned(std::size(MAPPED));
    const unsigned number = MAPPED[index % std::size(MAPPED)];
    const std::string title = "Channel " + std::to_string(channel + 1) + " " + midi_name(number);
    info = {};
    info.id = *midi_parameter_id(channel, number);
    put_text(info.title, title);
    put_text(info.short_title, midi_name(number));
    info.step_count = number == MAPPED_BEND ? 16383 : 127;
    info.default_value = number == MAPPED_BEND ? 0.5 : 0;
    info.unit = unit_of_channel(channel);
    info.flags = CAN_AUTOMATE | IS_HIDDEN;
}

} // namespace

std::optional<MidiParameter> find_midi_parameter(ParameterId id) {
    if (id < FIRST_MIDI_ID)
        return std::nullopt;
    const MidiParameter found{(id - FIRST_MIDI_ID) / IDS_PER_CHANNEL,
                              (id - FIRST_MIDI_ID) % IDS_PER_CHANNEL};
    return midi_parameter_id(found.channel, found.number) == id ? std::optional(found)
                                                                : std::nullopt;
}

std::optional<ParameterId> midi_parameter_id(unsigned channel, unsigned number) {
    if (channel >= unsigned(NUM_CHANNELS) || number > MAPPED_BEND ||
        std::ranges::find(MAPPED, uint8_t(number)) == std::end(MAPPED))
        return std::nullopt;
    return FIRST_MIDI_ID + channel * IDS_PER_CHANNEL + number;
}

int32_t num_midi_parameters() {
    return int32_t(NUM_CHANNELS * std::size(MAPPED));
}

int32_t num_parameters() {
    return int32_t(host_controls().size()) + num_midi_parameters();
}

void get_parameter_info(int32_t index, ParameterInfo& info) {
    const auto controls = host_controls();
    if (size_t(index) >= controls.size()) {
        get_midi_info(unsigned(index) - unsigned(controls.size()), info);
        return;
    }
    const HostControl& control = controls[size_t(index)];
    info = {};
    info.id = control.id;
    put_text(info.title, control.name);
    put_text(info.short_title, control.name);
    // Hosts draw what has steps as a list.
    info.step_count = control.is_list ? control.last - control.first : 0;
    info.default_value = normalized(control, control.default_value);
    info.unit = unit_of(control);
    info.flags = flags_of(control);
}

double normalized(const HostControl& control, int value) {
    return double(value - control.first) / double(control.last - control.first);
}

std::optional<int> value_of(const HostControl& control, double normalized_value) {
    return control_value(control,
                         control.first + normalized_value * double(control.last - control.first));
}

int32_t num_units() {
    return FIRST_GROUP_UNIT + int32_t(groups().size());
}

void get_unit_info(int32_t index, UnitInfo& info) {
    info = {.id = index, .parent = ROOT_UNIT, .name = {}, .program_list = NO_PROGRAM_LIST};
    if (index == ROOT_UNIT) {
        info.parent = NO_PARENT;
        put_text(info.name, "Tarquil");
    } else if (index < PROGRAM_UNIT) {
        put_text(info.name, "Channel " + std::to_string(index));
        info.program_list = index;
    } else if (index < FIRST_GROUP_UNIT) {
        put_text(info.name, index == PROGRAM_UNIT ? "Program" : "Bank");
    } else {
        const std::string& group = groups()[size_t(index - FIRST_GROUP_UNIT)];
        info.parent = is_in_bank(group) ? BANK_UNIT : PROGRAM_UNIT;
        put_text(info.name, group.substr(group.find('/') + 1));
    }
}

} // namespace tarquil::vst3
