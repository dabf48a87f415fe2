// How VST 2 hosts see the parameters: the host parameters, the first of which also stands for none.

#pragma once

#include <cstdint>

#include "softsynth/parameters/host_parameters.h"
#include "vst/abi/vst2.h"

namespace tarquil {

// How hosts and their sessions know the plug-in.
inline constexpr int32_t TARQUIL_UNIQUE_ID = four_characters("TqLx");

// Index 0 stands for "no parameter": hosts use it where they have none.
inline constexpr int32_t NO_VST_PARAM = 0;
inline constexpr int32_t NUM_VST_PARAMS = NUM_HOST_PARAMETERS;

// The controller of parameter `index`, 0 up to NUM_VST_PARAMS.
int vst_param_to_controller(int32_t index);

bool is_automatable_vst_param(int32_t index);

// NO_VST_PARAM for a controller that has no parameter.
int32_t controller_to_vst_param(int controller);

// The byte that a parameter's value 0..1 means, and the other way round.
int vst_value_to_byte(float value);
float byte_to_vst_value(int byte);

} // namespace tarquil
