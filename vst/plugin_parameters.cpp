// The host's parameters: the keyed controllers in table order, then one without a key.

#include "vst/plugin_parameters.h"

#include "common/assertion.h"

namespace tarquil {

int vst_param_to_controller(int32_t index) {
    TARQ_ASSERT(index >= 0);
    TARQ_ASSERT(index < int(NUM_VST_PARAMS));
    return index < int32_t(NUM_KEYED_CONTROLLERS) ? int(controller_rows()[size_t(index)].number)
                                                  : 0;
}

const char* vst_param_name(int32_t index) {
    return index < int32_t(NUM_KEYED_CONTROLLERS) ? controller_rows()[size_t(index)].key : "";
}

bool is_automatable_vst_param(int32_t index) {
    const int controller = vst_param_to_controller(index);
    return index != NO_VST_PARAM && controller != CTRL_PITCH_BEND_MSB &&
           controller != CTRL_PITCH_BEND_LSB;
}

int32_t controller_to_vst_param(int controller) {
    for (int32_t index = 1; index < NUM_VST_PARAMS; index++) {
        if (vst_param_to_controller(index) == controller)
            return index;
    }
    return NO_VST_PARAM;
}

int vst_value_to_byte(float value) {
    return int(0.01 + 127.0 * double(value));
}

float byte_to_vst_value(int byte) {
    return float(byte / 127.0);
}

} // namespace tarquil
