// The editor's window, where the build has one.

#pragma once

#include <memory>

#include "formats/vst3/abi/view.h"
#include "frame/edit_listener.h"
#include "player/player.h"

namespace tarquil::vst3 {

class PluginWindow {
  public:
    PluginWindow() = default;
    PluginWindow(const PluginWindow&) = delete;
    PluginWindow& operator=(const PluginWindow&) = delete;
    virtual ~PluginWindow() = default;

    // A new view of it, which keeps `owner`; one at a time shows the window.
    virtual View* make_view(Unknown& owner) = 0;
};

// Null in a build without windows.  Both stay as long as the object.
std::unique_ptr<PluginWindow> make_plugin_window(Player& player, EditListener& listener);

} // namespace tarquil::vst3
