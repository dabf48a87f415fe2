// Where the plug-in gets its editor.

#pragma once

#include <memory>

#include "vst/abi/aeff_editor.h"

namespace tarquil {

class TarqVST;

// The editor of a new plug-in, which outlives it.  Null in a build without windows.
std::unique_ptr<AEffEditor> make_editor(TarqVST& plugin);

} // namespace tarquil
