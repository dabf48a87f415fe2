// CLAP's extension "note-name": what the keys are called.

#pragma once

#include <clap/plugin.h>
#include <clap/string-sizes.h>

#include <cstddef>

namespace tarquil {

inline constexpr char CLAP_NOTE_NAME[] = "clap.note-name";

struct ClapNoteName {
    char name[CLAP_NAME_SIZE] = "";
    int16_t port = -1; // -1 in any of these: every one
    int16_t key = -1;
    int16_t channel = -1;
};
static_assert(offsetof(ClapNoteName, port) == 256 && sizeof(ClapNoteName) == 262);

struct ClapPluginNoteName { // main thread
    uint32_t(CLAP_ABI* count)(const clap_plugin* plugin);
    bool(CLAP_ABI* get)(const clap_plugin* plugin, uint32_t index, ClapNoteName* name);
};

struct ClapHostNoteName {
    void(CLAP_ABI* changed)(const clap_host* host); // main thread
};

} // namespace tarquil
