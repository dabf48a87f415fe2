// CLAP's extension "render": whether the host plays or exports.

#pragma once

#include <cstddef>

#include <clap/plugin.h>

namespace tarquil {

inline constexpr char CLAP_RENDER[] = "clap.render";

inline constexpr int32_t CLAP_RENDER_IN_REAL_TIME = 0;
inline constexpr int32_t CLAP_RENDER_OFFLINE = 1;

struct ClapPluginRender { // main thread
    bool(CLAP_ABI* has_hard_realtime_requirement)(const clap_plugin* plugin);
    bool(CLAP_ABI* set)(const clap_plugin* plugin, int32_t mode);
};
static_assert(offsetof(ClapPluginRender, set) == sizeof(void*));

} // namespace tarquil
