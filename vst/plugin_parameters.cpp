// How VST 2 hosts see the parameters.

#include "vst/plugin_parameters.h"

#include "common/assertion.h"

namespace tarquil {

int vst_param_to_controller(int32_t index) {
    TARQ_ASSERT(index >= 0);
    TARQ_ASSERT(index < int(NUM_VST_PARAMS));
    return int(host_parameter_controller(index));
}

bool is_automatable_vst_param(int32_t index) {
    return index != NO_VST_PARAM &&
           is_automatable_controller(unsigned(vst_param_to_controller(index)));
}

int32_t controller_to_vst_param(int controller) {
    return find_host_parameter(unsigned(controller)).value_or(NO_VST_PARAM);
}

int vst_value_to_byte(float value) {
    return int(0.01 + 127.0 * double(value));
}

float byte_to_vst_value(int byte) {
    return float(byte / 127.0);
}

} // namespace tarquil
