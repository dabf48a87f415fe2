// The plug-in with its editor in a window of the host's.

#pragma once

#include <chrono>
#include <thread>

#include "tests/vst/plugin_host.h"
#include "tests/windows/screen.h"

namespace tarquil {

// Between two idle calls.
inline void pause_host() {
    std::this_thread::sleep_for(std::chrono::milliseconds(16));
}

class EditedPlugin {
  public:
    EditedPlugin(Screen& shown_on, int x, audioMasterCallback answer)
        : screen(shown_on), host(256, true, answer) {
        ERect* rect = nullptr;
        host.call(effEditGetRect, 0, 0, &rect);
        parent = screen.make_window(rect->right, rect->bottom, x);
    }
    EditedPlugin(const EditedPlugin&) = delete;
    EditedPlugin& operator=(const EditedPlugin&) = delete;
    ~EditedPlugin() {
        if (parent != 0)
            screen.destroy(parent);
    }

    // NOLINTNEXTLINE(performance-no-int-to-ptr): how the interface takes a window's number
    bool open() { return host.call(effEditOpen, 0, 0, reinterpret_cast<void*>(parent)) != 0; }
    // What is left, or null.
    const char* close() {
        host.call(effEditClose);
        return parent != 0 && !screen.children(parent).empty() ? "a window is left" : nullptr;
    }
    std::string save() { return host.save(false); }
    void idle(int times = 1) {
        for (int i = 0; i < times; i++) {
            host.call(effEditIdle);
            pause_host();
        }
    }

    Screen& screen;
    PluginHost host;
    Window parent = 0;
};

} // namespace tarquil
