// What the plug-in asks of its host; a host may lack any of it.

#pragma once

#include <clap/ext/gui.h>
#include <clap/ext/latency.h>
#include <clap/ext/params.h>
#include <clap/ext/state.h>
#include <clap/ext/thread-check.h>
#include <clap/ext/timer-support.h>
#include <clap/host.h>

#include "formats/clap/abi/note_name.h"
#include "formats/clap/abi/posix_fd_support.h"
#include "formats/clap/abi/preset_load.h"
#include "formats/clap/abi/thread_pool.h"

namespace tarquil {

class ClapHost {
  public:
    explicit ClapHost(const clap_host& answering) : host(answering) {}

    // From the plug-in's own initialisation on.
    void find_extensions();

    // Main thread.  `flags`: CLAP_PARAM_RESCAN_*.
    void rescan(clap_param_rescan_flags flags) const;
    void mark_dirty() const;
    void latency_changed() const;
    void note_names_changed() const;
    // As the host named the preset.
    struct PresetName {
        uint32_t kind = CLAP_PRESET_IN_PLUGIN;
        const char* location = nullptr;
        const char* load_key = nullptr;
    };
    void preset_loaded(const PresetName& preset) const;
    void preset_failed(const PresetName& preset, const char* reason) const;

    // Any thread but the audio thread: parameters wait to be told.
    void request_flush() const;

    // Any thread.
    void request_callback() const { host.request_callback(&host); }
    // The window wants another size; false when it can not have it.
    [[nodiscard]] bool request_resize(uint32_t width, uint32_t height) const;
    void window_closed() const;

    // Whether its main loop can call a window now and then.
    [[nodiscard]] bool has_timers() const { return timer != nullptr || posix_fd != nullptr; }
    [[nodiscard]] const clap_host_timer_support* timers() const { return timer; }
    [[nodiscard]] const ClapHostPosixFd* descriptors() const { return posix_fd; }
    // Whether it lends threads; within process, false also when it has none to spare.
    [[nodiscard]] bool has_threads() const { return thread_pool != nullptr; }
    [[nodiscard]] bool request_exec(uint32_t num_tasks) const {
        return thread_pool->request_exec(&host, num_tasks);
    }
    [[nodiscard]] const clap_host* get() const { return &host; }

    // Says in the log, in builds that are for finding faults, that the host calls `operation` on
    // the wrong thread.
    void expect_main_thread(const char* operation) const;
    void expect_audio_thread(const char* operation) const;

  private:
    template <typename Extension> const Extension* find(const char* id) const {
        return static_cast<const Extension*>(host.get_extension(&host, id));
    }

    const clap_host& host;
    const clap_host_params* params = nullptr;
    const clap_host_state* state = nullptr;
    const clap_host_latency* latency = nullptr;
    const ClapHostNoteName* note_name = nullptr;
    const ClapHostPresetLoad* preset_load = nullptr;
    const clap_host_gui* gui = nullptr;
    const clap_host_timer_support* timer = nullptr;
    const ClapHostPosixFd* posix_fd = nullptr;
    const clap_host_thread_check* thread_check = nullptr;
    const ClapHostThreadPool* thread_pool = nullptr;
};

} // namespace tarquil
