// CLAP's extension "voice-info": how many voices a plug-in has.

#pragma once

#include <cstddef>

#include <clap/plugin.h>

namespace tarquil {

inline constexpr char CLAP_VOICE_INFO[] = "clap.voice-info";

struct ClapVoiceInfo {
    uint32_t voice_count = 0;    // that may sound
    uint32_t voice_capacity = 0; // that memory is kept for
    uint64_t flags = 0;
};
static_assert(sizeof(ClapVoiceInfo) == 16 && offsetof(ClapVoiceInfo, flags) == 8);

struct ClapPluginVoiceInfo {
    bool(CLAP_ABI* get)(const clap_plugin* plugin, ClapVoiceInfo* info); // main thread
};

} // namespace tarquil
