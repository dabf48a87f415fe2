// The extensions: tables of C functions, most of which ask the plug-in.

#include <clap/ext/audio-ports.h>
#include <clap/ext/latency.h>
#include <clap/ext/note-ports.h>
#include <clap/ext/state.h>

#include <string_view>

#include "formats/clap/abi/note_name.h"
#include "formats/clap/abi/preset_load.h"
#include "formats/clap/abi/render.h"
#include "formats/clap/abi/tail.h"
#include "formats/clap/abi/thread_pool.h"
#include "formats/clap/abi/voice_info.h"
#include "formats/clap/clap_interface.h"
#include "formats/clap/clap_parameters.h"
#include "formats/clap/clap_plugin.h"
#include "formats/clap/clap_text.h"
#include "formats/clap/clap_window_table.h"
#include "midi/gm/gm_channel.h"

namespace tarquil {

namespace {

uint32_t count_ports(bool is_there) {
    return is_there ? 1 : 0;
}

constexpr clap_plugin_audio_ports AUDIO_PORTS = {
    .count = [](const clap_plugin* /*plugin*/, bool is_input) { return count_ports(!is_input); },
    .get =
        [](const clap_plugin* /*plugin*/, uint32_t index, bool is_input,
           clap_audio_port_info* info) {
            if (is_input || index != 0 || info == nullptr)
                return false;
            *info = {.id = 0,
                     .name = "",
                     .flags = CLAP_AUDIO_PORT_IS_MAIN,
                     .channel_count = 2,
                     .port_type = CLAP_PORT_STEREO,
                     .in_place_pair = CLAP_INVALID_ID};
            copy_clap_text(info->name, "Main");
            return true;
        }};

constexpr clap_plugin_note_ports NOTE_PORTS = {
    .count = [](const clap_plugin* /*plugin*/, bool is_input) { return count_ports(is_input); },
    .get =
        [](const clap_plugin* /*plugin*/, uint32_t index, bool is_input,
           clap_note_port_info* info) {
            if (!is_input || index != 0 || info == nullptr)
                return false;
            // Program changes, controllers and bends come by MIDI only.
            *info = {.id = 0,
                     .supported_dialects = CLAP_NOTE_DIALECT_CLAP | CLAP_NOTE_DIALECT_MIDI,
                     .preferred_dialect = CLAP_NOTE_DIALECT_MIDI,
                     .name = ""};
            copy_clap_text(info->name, "MIDI");
            return true;
        }};

constexpr clap_plugin_state STATE = {
    .save =
        [](const clap_plugin* plugin, const clap_ostream* stream) {
            return stream != nullptr && ClapPlugin::of(plugin).save(*stream);
        },
    .load =
        [](const clap_plugin* plugin, const clap_istream* stream) {
            return stream != nullptr && ClapPlugin::of(plugin).load(*stream);
        }};

constexpr clap_plugin_latency LATENCY = {
    .get = [](const clap_plugin* plugin) { return ClapPlugin::of(plugin).latency(); }};

// Programs may feed a delay back for good.
constexpr ClapPluginTail TAIL = {
    .get = [](const clap_plugin* /*plugin*/) { return CLAP_INFINITE_TAIL; }};

constexpr ClapPluginThreadPool THREAD_POOL = {
    .exec = [](const clap_plugin* plugin, uint32_t index) {
        ClapPlugin::of(plugin).jobs().exec(index);
    }};

// General MIDI has a second engine, for its drums.
constexpr ClapPluginVoiceInfo VOICE_INFO = {
    .get = [](const clap_plugin* plugin, ClapVoiceInfo* info) {
        if (info == nullptr)
            return false;
        const bool has_drums =
            ClapPlugin::of(plugin).player().player().dialect() == MidiDialect::GENERAL_MIDI;
        *info = {.voice_count = (has_drums ? 2 : 1) * HostedPlayer::NUM_VOICES,
                 .voice_capacity = 2 * HostedPlayer::NUM_VOICES};
        return true;
    }};

constexpr ClapPluginNoteName NOTE_NAME = {
    .count = [](const clap_plugin* plugin) { return ClapPlugin::of(plugin).count_note_names(); },
    .get =
        [](const clap_plugin* plugin, uint32_t index, ClapNoteName* name) {
            const auto& names = ClapPlugin::of(plugin).note_names();
            if (index >= names.size() || name == nullptr)
                return false;
            *name = {};
            copy_clap_text(name->name, names[index].name);
            name->key = int16_t(names[index].key);
            name->channel = int16_t(RHYTHM_CHANNEL);
            return true;
        }};

constexpr ClapPluginPresetLoad PRESET_LOAD = {
    .from_location = [](const clap_plugin* plugin, uint32_t kind, const char* location,
                        const char* load_key) {
        return ClapPlugin::of(plugin).load_preset(kind, location, load_key);
    }};

// An export has the bytes of a performance.
constexpr ClapPluginRender RENDER = {
    .has_hard_realtime_requirement = [](const clap_plugin* /*plugin*/) { return false; },
    .set =
        [](const clap_plugin* /*plugin*/, int32_t mode) {
            return mode == CLAP_RENDER_IN_REAL_TIME || mode == CLAP_RENDER_OFFLINE;
        }};

struct Extension {
    std::string_view id;
    const void* functions;
};

constexpr Extension EXTENSIONS[] = {
    {CLAP_EXT_AUDIO_PORTS, &AUDIO_PORTS},   {CLAP_EXT_NOTE_PORTS, &NOTE_PORTS},
    {CLAP_EXT_PARAMS, &CLAP_PARAMETERS},    {CLAP_EXT_STATE, &STATE},
    {CLAP_EXT_LATENCY, &LATENCY},           {CLAP_TAIL, &TAIL},
    {CLAP_VOICE_INFO, &VOICE_INFO},         {CLAP_THREAD_POOL, &THREAD_POOL},
    {CLAP_NOTE_NAME, &NOTE_NAME},           {CLAP_PRESET_LOAD, &PRESET_LOAD},
    {CLAP_PRESET_LOAD_DRAFT, &PRESET_LOAD}, {CLAP_RENDER, &RENDER},
};

} // namespace

const void* find_clap_extension(ClapPlugin& plugin, const char* id) {
    for (const Extension& extension : EXTENSIONS) {
        if (extension.id == id)
            return extension.functions;
    }
    return find_clap_window_extension(plugin, id);
}

} // namespace tarquil
