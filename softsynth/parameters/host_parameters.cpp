// The order in which hosts see the parameters.

#include "softsynth/parameters/host_parameters.h"

#include "common/assertion.h"

namespace tarquil {

namespace {

const ControllerInfo* row_of(int index) {
    TARQ_ASSERT(index >= 0);
    TARQ_ASSERT(index < NUM_HOST_PARAMETERS);
    return index < int(NUM_KEYED_CONTROLLERS) ? &controller_rows()[size_t(index)] : nullptr;
}

} // namespace

unsigned host_parameter_controller(int index) {
    const ControllerInfo* row = row_of(index);
    return row == nullptr ? 0U : unsigned(row->number);
}

std::optional<int> find_host_parameter(unsigned controller) {
    const ControllerInfo* row = find_controller(controller);
    if (row == nullptr)
        return std::nullopt;
    return int(row - controller_rows().data());
}

const char* host_parameter_key(int index) {
    const ControllerInfo* row = row_of(index);
    return row == nullptr ? "" : row->key;
}

bool is_automatable_controller(unsigned controller) {
    return controller != CTRL_PITCH_BEND_MSB && controller != CTRL_PITCH_BEND_LSB;
}

} // namespace tarquil
