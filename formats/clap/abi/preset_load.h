// CLAP's extension "preset-load": a preset out of the host's browser.

#pragma once

#include <clap/plugin.h>

#include <cstdint>

namespace tarquil {

inline constexpr char CLAP_PRESET_LOAD[] = "clap.preset-load/2";
// The same under its name as a draft.
inline constexpr char CLAP_PRESET_LOAD_DRAFT[] = "clap.preset-load.draft/2";

// Where a preset is: in a file at a path, or in the plug-in itself, where the key alone says which.
enum ClapPresetPlace : uint32_t { CLAP_PRESET_IN_FILE = 0, CLAP_PRESET_IN_PLUGIN = 1 };

struct ClapPluginPresetLoad {
    bool(CLAP_ABI* from_location)(const clap_plugin* plugin, uint32_t kind, const char* location,
                                  const char* load_key); // main thread
};

struct ClapHostPresetLoad { // main thread
    void(CLAP_ABI* on_error)(const clap_host* host, uint32_t kind, const char* location,
                             const char* load_key, int32_t os_error, const char* message);
    void(CLAP_ABI* loaded)(const clap_host* host, uint32_t kind, const char* location,
                           const char* load_key);
};

} // namespace tarquil
