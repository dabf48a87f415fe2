// A build with windows.

#include "vst/tarq_editor.h"

namespace tarquil {

std::unique_ptr<AEffEditor> make_editor(TarqVST& plugin) {
    return std::make_unique<TarqEditor>(plugin);
}

} // namespace tarquil
