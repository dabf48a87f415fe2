// CLAP's extension "tail": how long a plug-in sounds after its input has ended.

#pragma once

#include <clap/plugin.h>

namespace tarquil {

inline constexpr char CLAP_TAIL[] = "clap.tail";

// Any tail of 2^31 - 1 frames or more never ends.
inline constexpr uint32_t CLAP_INFINITE_TAIL = UINT32_MAX;

struct ClapPluginTail {
    uint32_t(CLAP_ABI* get)(const clap_plugin* plugin); // frames; main and audio thread
};
static_assert(sizeof(ClapPluginTail) == sizeof(void*));

} // namespace tarquil
