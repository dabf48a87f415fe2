// How a bank's sounds get into controllers' timelines.

#include "softsynth/voices/program_change.h"

namespace tarquil {

void emit_program_change(const Instrument& instrument, ControllerArray& controllers,
                         uint32_t time) {
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (!is_global_controller(number))
            controllers.get_controller(number).push_back({time, instrument.get_controller(number)});
    }
}

void emit_global_controllers(const TarqSettings& bank, ControllerArray& controllers,
                             uint32_t time) {
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (is_global_controller(number))
            controllers.get_controller(number).push_back(
                {time, bank.get_global_controller(number)});
    }
}

} // namespace tarquil
