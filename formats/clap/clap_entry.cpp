// Where CLAP hosts enter: the module's one symbol and the factory behind it.

#include <clap/entry.h>
#include <clap/plugin-factory.h>
#include <clap/plugin-features.h>

#include <exception>
#include <string_view>

#include "formats/clap/clap_plugin.h"
#include "formats/clap/clap_presets.h"

namespace tarquil {

namespace {

const char* const FEATURES[] = {CLAP_PLUGIN_FEATURE_INSTRUMENT, CLAP_PLUGIN_FEATURE_SYNTHESIZER,
                                CLAP_PLUGIN_FEATURE_STEREO, nullptr};

uint32_t count(const clap_plugin_factory* /*factory*/) {
    return 1;
}

const clap_plugin_descriptor* describe(const clap_plugin_factory* /*factory*/, uint32_t index) {
    return index == 0 ? &ClapPlugin::DESCRIPTOR : nullptr;
}

const clap_plugin* create(const clap_plugin_factory* /*factory*/, const clap_host* host,
                          const char* id) {
    if (host == nullptr || !clap_version_is_compatible(host->clap_version) || id == nullptr ||
        std::string_view(id) != ClapPlugin::DESCRIPTOR.id)
        return nullptr;
    try {
        return (new ClapPlugin(*host))->get(); // the host's destroy deletes it
    } catch (const std::exception&) {
        return nullptr;
    }
}

constexpr clap_plugin_factory FACTORY = {
    .get_plugin_count = count, .get_plugin_descriptor = describe, .create_plugin = create};

bool init(const char* /*path*/) {
    return true;
}

void deinit() {}

const void* get_factory(const char* id) {
    const std::string_view wanted = id != nullptr ? id : "";
    if (wanted == CLAP_PLUGIN_FACTORY_ID)
        return &FACTORY;
    return wanted == CLAP_PRESET_DISCOVERY || wanted == CLAP_PRESET_DISCOVERY_DRAFT ? &CLAP_PRESETS
                                                                                    : nullptr;
}

} // namespace

const clap_plugin_descriptor ClapPlugin::DESCRIPTOR = {
    .clap_version = CLAP_VERSION,
    .id = "org.tarquil.tarquil",
    .name = "Tarquil",
    .vendor = "Tarquil",
    .url = "",
    .manual_url = "",
    .support_url = "",
    .version = TARQUIL_VERSION,
    .description = "Multi-timbral software synthesizer",
    .features = const_cast<const char**>(FEATURES)};

} // namespace tarquil

const clap_plugin_entry clap_entry = {.clap_version = CLAP_VERSION,
                                      .init = tarquil::init,
                                      .deinit = tarquil::deinit,
                                      .get_factory = tarquil::get_factory};
