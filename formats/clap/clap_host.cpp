// What the plug-in asks of its host.

#include "formats/clap/clap_host.h"

#include "common/log/log.h"

namespace tarquil {

void ClapHost::find_extensions() {
    params = find<clap_host_params>(CLAP_EXT_PARAMS);
    state = find<clap_host_state>(CLAP_EXT_STATE);
    latency = find<clap_host_latency>(CLAP_EXT_LATENCY);
    note_name = find<ClapHostNoteName>(CLAP_NOTE_NAME);
    preset_load = find<ClapHostPresetLoad>(CLAP_PRESET_LOAD);
    if (preset_load == nullptr)
        preset_load = find<ClapHostPresetLoad>(CLAP_PRESET_LOAD_DRAFT);
    gui = find<clap_host_gui>(CLAP_EXT_GUI);
    timer = find<clap_host_timer_support>(CLAP_EXT_TIMER_SUPPORT);
    posix_fd = find<ClapHostPosixFd>(CLAP_POSIX_FD_SUPPORT);
    thread_pool = find<ClapHostThreadPool>(CLAP_THREAD_POOL);
    thread_check = find<clap_host_thread_check>(CLAP_EXT_THREAD_CHECK);
}

void ClapHost::rescan(clap_param_rescan_flags flags) const {
    if (params != nullptr)
        params->rescan(&host, flags);
}

void ClapHost::mark_dirty() const {
    if (state != nullptr)
        state->mark_dirty(&host);
}

void ClapHost::latency_changed() const {
    if (latency != nullptr)
        latency->changed(&host);
}

void ClapHost::note_names_changed() const {
    if (note_name != nullptr)
        note_name->changed(&host);
}

void ClapHost::preset_loaded(const PresetName& preset) const {
    if (preset_load != nullptr)
        preset_load->loaded(&host, preset.kind, preset.location, preset.load_key);
}

void ClapHost::preset_failed(const PresetName& preset, const char* reason) const {
    constexpr int32_t NO_OS_ERROR = 0;
    if (preset_load != nullptr)
        preset_load->on_error(&host, preset.kind, preset.location, preset.load_key, NO_OS_ERROR,
                              reason);
}

void ClapHost::request_flush() const {
    if (params != nullptr)
        params->request_flush(&host);
    else
        host.request_process(&host);
}

bool ClapHost::request_resize(uint32_t width, uint32_t height) const {
    return gui == nullptr || gui->request_resize(&host, width, height);
}

void ClapHost::window_closed() const {
    if (gui != nullptr)
        gui->closed(&host, false);
}

#ifdef TARQUIL_CHECK_THREADS
void ClapHost::expect_main_thread(const char* operation) const {
    if (thread_check != nullptr && !thread_check->is_main_thread(&host))
        logPrintf("the host calls %s beside its main thread\n", operation);
}

void ClapHost::expect_audio_thread(const char* operation) const {
    if (thread_check != nullptr && !thread_check->is_audio_thread(&host))
        logPrintf("the host calls %s beside its audio thread\n", operation);
}
#else
void ClapHost::expect_main_thread(const char* /*operation*/) const {}
void ClapHost::expect_audio_thread(const char* /*operation*/) const {}
#endif

} // namespace tarquil
