// The C functions by which hosts call the plug-in.

#include "formats/clap/clap_interface.h"

#include "formats/clap/clap_plugin.h"

namespace tarquil {

namespace {

bool init(const clap_plugin* plugin) {
    ClapPlugin::of(plugin).host().find_extensions();
    return true;
}

void destroy(const clap_plugin* plugin) {
    delete &ClapPlugin::of(plugin);
}

bool activate(const clap_plugin* plugin, double rate, uint32_t /*min*/, uint32_t /*max*/) {
    ClapPlugin::of(plugin).host().expect_main_thread("activate");
    return ClapPlugin::of(plugin).activate(rate);
}

void deactivate(const clap_plugin* plugin) {
    ClapPlugin::of(plugin).host().expect_main_thread("deactivate");
    ClapPlugin::of(plugin).deactivate();
}

bool start_processing(const clap_plugin* /*plugin*/) {
    return true;
}

void stop_processing(const clap_plugin* /*plugin*/) {}

void reset(const clap_plugin* plugin) {
    ClapPlugin::of(plugin).host().expect_audio_thread("reset");
    ClapPlugin::of(plugin).reset();
}

clap_process_status process(const clap_plugin* plugin, const clap_process* block) {
    ClapPlugin::of(plugin).host().expect_audio_thread("process");
    return block == nullptr ? CLAP_PROCESS_ERROR : ClapPlugin::of(plugin).process(*block);
}

const void* get_extension(const clap_plugin* plugin, const char* id) {
    return id == nullptr ? nullptr : find_clap_extension(ClapPlugin::of(plugin), id);
}

void on_main_thread(const clap_plugin* plugin) {
    ClapPlugin::of(plugin).on_main_thread();
}

} // namespace

clap_plugin make_clap_interface(ClapPlugin& plugin) {
    return {.desc = &ClapPlugin::DESCRIPTOR,
            .plugin_data = &plugin,
            .init = init,
            .destroy = destroy,
            .activate = activate,
            .deactivate = deactivate,
            .start_processing = start_processing,
            .stop_processing = stop_processing,
            .reset = reset,
            .process = process,
            .get_extension = get_extension,
            .on_main_thread = on_main_thread};
}

} // namespace tarquil
