// The parameters: those that every format shows, then hidden ones that stand for MIDI messages.

#include "formats/vst3/parameters.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "formats/vst3/text.h"
#include "instrument/learned_controls.h"
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

// A controller that no channel has for itself: it is there to be learned, which any channel does.
constexpr ParameterId FIRST_LEARNING_ID = FIRST_MIDI_ID + NUM_CHANNELS * IDS_PER_CHANNEL;

bool is_mapped(unsigned number) {
    return number <= MAPPED_BEND && std::ranges::find(MAPPED, uint8_t(number)) != std::end(MAPPED);
}

bool is_only_learned(unsigned number) {
    return number < NUM_MIDI_CONTROLLERS && is_learnable(number) && !is_mapped(number);
}

const std::vector<uint8_t>& learning_numbers() {
    static const std::vector<uint8_t> all = [] {
        std::vector<uint8_t> found;
        for (unsigned number = 0; number < NUM_MIDI_CONTROLLERS; number++) {
            if (is_only_learned(number))
                found.push_back(uint8_t(number));
        }
        return found;
    }();
    return all;
}

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

void get_learning_info(unsigned number, ParameterInfo& info) {
    info = {};
    info.id = *learning_parameter_id(number);
    put_text(info.title, "Any channel " + midi_name(number));
    put_text(info.short_title, midi_name(number));
    info.step_count = 127;
    info.unit = ROOT_UNIT;
    info.flags = CAN_AUTOMATE | IS_HIDDEN;
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
    if (channel >= unsigned(NUM_CHANNELS) || !is_mapped(number))
        return std::nullopt;
    return FIRST_MIDI_ID + channel * IDS_PER_CHANNEL + number;
}

std::optional<unsigned> find_learning_parameter(ParameterId id) {
    const ParameterId number = id - FIRST_LEARNING_ID;
    return learning_parameter_id(number) == id ? std::optional(number) : std::nullopt;
}

std::optional<ParameterId> learning_parameter_id(unsigned number) {
    if (!is_only_learned(number))
        return std::nullopt;
    return FIRST_LEARNING_ID + number;
}

int32_t num_midi_parameters() {
    return int32_t(NUM_CHANNELS * std::size(MAPPED) + learning_numbers().size());
}

int32_t num_parameters() {
    return int32_t(host_controls().size()) + num_midi_parameters();
}

void get_parameter_info(int32_t index, ParameterInfo& info) {
    const auto controls = host_controls();
    if (size_t(index) >= controls.size()) {
        const size_t hidden = size_t(index) - controls.size();
        constexpr size_t NUM_MAPPED = NUM_CHANNELS * std::size(MAPPED);
        if (hidden < NUM_MAPPED)
            get_midi_info(unsigned(hidden), info);
        else
            get_learning_info(learning_numbers()[hidden - NUM_MAPPED], info);
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
