// The parameters: those that every format shows, then hidden ones that stand for MIDI messages.

#pragma once

#include <cstdint>
#include <optional>

#include "formats/common/host_controls.h"
#include "formats/vst3/abi/controller.h"

namespace tarquil::vst3 {

// What a hidden parameter stands for.
struct MidiParameter {
    unsigned channel = 0;
    unsigned number = 0; // a controller, MAPPED_PRESSURE or MAPPED_BEND
};

// A host's number is a message's id or nothing.
std::optional<MidiParameter> find_midi_parameter(ParameterId id);
// The id of a message; nothing for one that no hidden parameter stands for, since it does nothing.
std::optional<ParameterId> midi_parameter_id(unsigned channel, unsigned number);

// The other controllers that can be learned have one each for all channels, since what they move
// is the same on any.
std::optional<unsigned> find_learning_parameter(ParameterId id);
std::optional<ParameterId> learning_parameter_id(unsigned number);

int32_t num_parameters();
int32_t num_midi_parameters(); // the hidden ones
// Index 0 up to that; texts of the player are not asked for.
void get_parameter_info(int32_t index, ParameterInfo& info);

// Between a value of a control and the 0..1 that hosts have.
double normalized(const HostControl& control, int value);
std::optional<int> value_of(const HostControl& control, double normalized_value);

// Units: the root, one for each channel, which carries its program, then the parameters' groups.
int32_t num_units();
void get_unit_info(int32_t index, UnitInfo& info);
constexpr int32_t unit_of_channel(unsigned channel) {
    return int32_t(channel) + 1;
}

} // namespace tarquil::vst3
