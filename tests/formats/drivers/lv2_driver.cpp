// The LV2 plug-in, driven.

#include "tests/formats/lv2/lv2_host.h"

namespace tarquil {

std::unique_ptr<FormatDriver> drive_lv2() {
    return std::make_unique<Lv2Host>(0);
}

} // namespace tarquil
