// CLAP's extension "thread-pool": the host runs parts of a block on its own audio threads.

#pragma once

#include <clap/plugin.h>

namespace tarquil {

inline constexpr char CLAP_THREAD_POOL[] = "clap.thread-pool";

struct ClapPluginThreadPool {
    void(CLAP_ABI* exec)(const clap_plugin* plugin, uint32_t task_index); // the host's threads
};
static_assert(sizeof(ClapPluginThreadPool) == sizeof(void*));

struct ClapHostThreadPool {
    // Calls exec for each index below `num_tasks` and returns when all have returned; false, and
    // nothing has been called, when it can not.  Within process() only.
    bool(CLAP_ABI* request_exec)(const clap_host* host, uint32_t num_tasks);
};
static_assert(sizeof(ClapHostThreadPool) == sizeof(void*));

} // namespace tarquil
