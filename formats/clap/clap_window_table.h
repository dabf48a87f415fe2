// The extensions that belong to the window.

#pragma once

namespace tarquil {

class ClapPlugin;

// Null for one that there is not: all, where the build or the host can show no window.
const void* find_clap_window_extension(ClapPlugin& plugin, const char* id);

} // namespace tarquil
