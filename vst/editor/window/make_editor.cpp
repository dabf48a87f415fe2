// A build with windows.

#include "vst/editor/window/tarq_editor.h"

std::unique_ptr<PluginEditor> make_editor(TarqVST& plugin) {
    return std::make_unique<TarqEditor>(plugin);
}
