// The CLAP plug-in, driven.

#include "tests/formats/clap/clap_host.h"

namespace tarquil {

std::unique_ptr<FormatDriver> drive_clap() {
    return std::make_unique<ClapTestHost>(false, nullptr, "");
}

} // namespace tarquil
