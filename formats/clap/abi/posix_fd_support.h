// CLAP's extension "posix-fd-support": the host's main loop watches a plug-in's file descriptors.

#pragma once

#include <cstddef>

#include <clap/plugin.h>

namespace tarquil {

inline constexpr char CLAP_POSIX_FD_SUPPORT[] = "clap.posix-fd-support";

inline constexpr uint32_t CLAP_FD_CAN_READ = 1U << 0U;

// All on the main thread.
struct ClapPluginPosixFd {
    void(CLAP_ABI* on_fd)(const clap_plugin* plugin, int fd, uint32_t flags);
};

struct ClapHostPosixFd {
    bool(CLAP_ABI* register_fd)(const clap_host* host, int fd, uint32_t flags);
    bool(CLAP_ABI* modify_fd)(const clap_host* host, int fd, uint32_t flags);
    bool(CLAP_ABI* unregister_fd)(const clap_host* host, int fd);
};
static_assert(offsetof(ClapHostPosixFd, unregister_fd) == 2 * sizeof(void*));

} // namespace tarquil
