// Stands in for the window where there are none.

#include "formats/vst3/window.h"

namespace tarquil::vst3 {

std::unique_ptr<PluginWindow> make_plugin_window(Player& /*player*/, EditListener& /*listener*/) {
    return nullptr;
}

} // namespace tarquil::vst3
