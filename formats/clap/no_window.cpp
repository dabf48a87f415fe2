// Stands in for the window where the build has none.

#include "formats/clap/clap_window.h"

namespace tarquil {

std::unique_ptr<ClapWindow> make_clap_window(ClapPlugin& /*plugin*/) {
    return nullptr;
}

} // namespace tarquil
