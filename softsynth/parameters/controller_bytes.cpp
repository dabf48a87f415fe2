// One byte for every controller number.

#include "softsynth/parameters/controller_bytes.h"

#include "softsynth/parameters/controller_table.h"

namespace tarquil {

const ControllerBytes& default_controller_bytes() {
    static const ControllerBytes defaults = [] {
        ControllerBytes bytes{};
        for (const ControllerInfo& info : controller_rows())
            bytes[info.number] = uint8_t(default_byte(info));
        return bytes;
    }();
    return defaults;
}

} // namespace tarquil
