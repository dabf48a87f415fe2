// A build without windows.

#include "vst/plugin_editor.h"

std::unique_ptr<PluginEditor> make_editor(TarqVST& /*plugin*/) {
    return nullptr;
}
