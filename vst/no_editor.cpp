// A build without windows.

#include "vst/plugin_editor.h"

namespace tarquil {

std::unique_ptr<AEffEditor> make_editor(TarqVST& /*plugin*/) {
    return nullptr;
}

} // namespace tarquil
