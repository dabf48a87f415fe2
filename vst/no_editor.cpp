// A build without windows.

#include "vst/plugin_editor.h"

namespace tarquil {

std::unique_ptr<PluginEditor> make_editor(TarqVST& /*plugin*/) {
    return nullptr;
}

} // namespace tarquil
