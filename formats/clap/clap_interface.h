// The C functions by which hosts call the plug-in.

#pragma once

#include <clap/plugin.h>

namespace tarquil {

class ClapPlugin;

clap_plugin make_clap_interface(ClapPlugin& plugin);

// An extension's functions; null for one that there is not.
const void* find_clap_extension(ClapPlugin& plugin, const char* id);

} // namespace tarquil
