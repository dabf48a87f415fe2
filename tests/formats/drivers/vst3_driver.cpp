// The VST 3 plug-in, driven.

#include "tests/formats/vst3/vst3_host.h"

namespace tarquil {

std::unique_ptr<FormatDriver> drive_vst3() {
    return std::make_unique<vst3::Vst3Host>(0, "");
}

} // namespace tarquil
