// The extensions that belong to the window: tables of C functions that ask it.

#include "formats/clap/clap_window_table.h"

#include <clap/ext/gui.h>
#include <clap/ext/timer-support.h>

#include <string_view>

#include "formats/clap/abi/posix_fd_support.h"
#include "formats/clap/clap_plugin.h"

namespace tarquil {

namespace {

ClapWindow& window_of(const clap_plugin* plugin) {
    return *ClapPlugin::of(plugin).window(); // there is one, or there were no table
}

bool is_x11(const char* api) {
    return api != nullptr && std::string_view(api) == CLAP_WINDOW_API_X11;
}

// A floating window may be of any kind.
bool is_supported(const clap_plugin* plugin, const char* api, bool is_floating) {
    return ClapPlugin::of(plugin).host().has_timers() &&
           (is_x11(api) || (is_floating && (api == nullptr || *api == '\0')));
}

constexpr clap_plugin_gui GUI = {
    .is_api_supported = is_supported,
    .get_preferred_api =
        [](const clap_plugin* /*plugin*/, const char** api, bool* is_floating) {
            *api = CLAP_WINDOW_API_X11;
            *is_floating = false;
            return true;
        },
    .create =
        [](const clap_plugin* plugin, const char* api, bool is_floating) {
            return is_supported(plugin, api, is_floating) && window_of(plugin).create(is_floating);
        },
    .destroy = [](const clap_plugin* plugin) { window_of(plugin).destroy(); },
    .set_scale = [](const clap_plugin* plugin,
                    double scale) { return window_of(plugin).set_scale(scale); },
    .get_size =
        [](const clap_plugin* plugin, uint32_t* width, uint32_t* height) {
            window_of(plugin).get_size(*width, *height);
            return true;
        },
    .can_resize = [](const clap_plugin* /*plugin*/) { return true; },
    .get_resize_hints =
        [](const clap_plugin* plugin, clap_gui_resize_hints* hints) {
            *hints = {.can_resize_horizontally = true,
                      .can_resize_vertically = true,
                      .preserve_aspect_ratio = true,
                      .aspect_ratio_width = 0,
                      .aspect_ratio_height = 0};
            window_of(plugin).get_size(hints->aspect_ratio_width, hints->aspect_ratio_height);
            return true;
        },
    .adjust_size =
        [](const clap_plugin* plugin, uint32_t* width, uint32_t* height) {
            window_of(plugin).adjust_size(*width, *height);
            return true;
        },
    .set_size = [](const clap_plugin* plugin, uint32_t width,
                   uint32_t height) { return window_of(plugin).set_size(width, height); },
    .set_parent =
        [](const clap_plugin* plugin, const clap_window* parent) {
            return parent != nullptr && is_x11(parent->api) &&
                   window_of(plugin).set_parent(uintptr_t(parent->x11));
        },
    .set_transient =
        [](const clap_plugin* plugin, const clap_window* below) {
            return below != nullptr && is_x11(below->api) &&
                   window_of(plugin).set_transient(uintptr_t(below->x11));
        },
    .suggest_title =
        [](const clap_plugin* plugin, const char* title) {
            if (title != nullptr)
                window_of(plugin).suggest_title(title);
        },
    .show = [](const clap_plugin* plugin) { return window_of(plugin).show(); },
    .hide = [](const clap_plugin* plugin) { return window_of(plugin).hide(); }};

constexpr clap_plugin_timer_support TIMER = {
    .on_timer = [](const clap_plugin* plugin, clap_id /*timer*/) { window_of(plugin).idle(); }};

constexpr ClapPluginPosixFd POSIX_FD = {
    .on_fd = [](const clap_plugin* plugin, int /*fd*/, uint32_t /*flags*/) {
        window_of(plugin).idle();
    }};

} // namespace

const void* find_clap_window_extension(ClapPlugin& plugin, const char* id) {
    if (plugin.window() == nullptr)
        return nullptr;
    const std::string_view wanted = id;
    if (wanted == CLAP_EXT_GUI)
        return &GUI;
    if (wanted == CLAP_EXT_TIMER_SUPPORT)
        return &TIMER;
    return wanted == CLAP_POSIX_FD_SUPPORT ? &POSIX_FD : nullptr;
}

} // namespace tarquil
