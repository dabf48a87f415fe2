// The plug-in's window: the editor, and what the user does in it told to the host.

#include <cstdint>

#include "formats/clap/clap_plugin.h"
#include "formats/clap/clap_window.h"
#include "formats/clap/window_timer.h"
#include "frame/edit_listener.h"
#include "frame/editor_frame.h"
#include "frame/host_synth.h"

namespace tarquil {

namespace {

class EditorClapWindow : public ClapWindow, private EditListener {
  public:
    explicit EditorClapWindow(ClapPlugin& edited)
        : plugin(edited), synth(edited.player().player(), *this),
          frame(edited.player().player(), synth), timer(edited.host()) {
        frame.on_resize = [this](int width, int height) { follow_user(width, height); };
    }

    bool create(bool wants_floating) override {
        destroy();
        is_floating = wants_floating;
        return true;
    }
    void destroy() override {
        hide();
        parent = 0;
        frame.window_below = 0;
        frame.title = "Tarquil";
    }
    bool show() override;
    bool hide() override {
        timer.stop();
        frame.close();
        return true;
    }
    void idle() override;

    bool set_scale(double scale) override { return frame.suggest_scale(scale); }
    void get_size(uint32_t& width, uint32_t& height) override {
        width = uint32_t(frame.width());
        height = uint32_t(frame.height());
    }
    void adjust_size(uint32_t& width, uint32_t& height) override;
    bool set_size(uint32_t width, uint32_t height) override;
    bool set_parent(uintptr_t window) override {
        if (is_floating || window == 0)
            return false;
        parent = window;
        return true;
    }
    bool set_transient(uintptr_t below) override {
        frame.window_below = below;
        return is_floating;
    }
    void suggest_title(const char* title) override { frame.title = title; }

  private:
    void follow_user(int width, int height);

    // The pitch bend is in the window, but no parameter.
    void begin_edit(unsigned number) override {
        if (find_host_control(number) != nullptr)
            tell(plugin.window_edits().begin(number));
    }
    void edited(unsigned number, int value) override;
    void end_edit(unsigned number) override {
        if (find_host_control(number) != nullptr)
            tell(plugin.window_edits().end(number));
    }
    void programs_changed() override;
    void tell(bool is_queued);

    ClapPlugin& plugin;
    HostSynth synth;
    EditorFrame frame;
    WindowTimer timer;
    uintptr_t parent = 0;
    bool is_floating = false;
    int shown_width = 0; // as host and user know it, and:
    int shown_height = 0;
};

bool EditorClapWindow::show() {
    if (frame.is_open())
        return true;
    if (!is_floating && parent == 0)
        return false;
    if (!frame.open(is_floating ? 0 : parent))
        return false;
    shown_width = frame.width();
    shown_height = frame.height();
    if (timer.start())
        return true;
    frame.close();
    return false;
}

void EditorClapWindow::idle() {
    timer.drain();
    frame.idle();
    if (!frame.is_closed_by_user())
        return;
    hide();
    plugin.host().window_closed();
}

void EditorClapWindow::adjust_size(uint32_t& width, uint32_t& height) {
    int fitting_width = int(std::min(width, uint32_t(INT16_MAX)));
    int fitting_height = int(std::min(height, uint32_t(INT16_MAX)));
    frame.fit_size(fitting_width, fitting_height);
    width = uint32_t(fitting_width);
    height = uint32_t(fitting_height);
}

bool EditorClapWindow::set_size(uint32_t width, uint32_t height) {
    uint32_t fitting_width = width;
    uint32_t fitting_height = height;
    adjust_size(fitting_width, fitting_height);
    shown_width = int(fitting_width);
    shown_height = int(fitting_height);
    frame.resize(shown_width, shown_height);
    return fitting_width == width && fitting_height == height;
}

void EditorClapWindow::follow_user(int width, int height) {
    // The host knows what it has asked for itself.
    if (is_floating || (width == shown_width && height == shown_height))
        return;
    if (plugin.host().request_resize(uint32_t(width), uint32_t(height))) {
        shown_width = width;
        shown_height = height;
    } else {
        frame.resize(shown_width, shown_height);
        shown_width = frame.width();
        shown_height = frame.height();
    }
}

void EditorClapWindow::edited(unsigned number, int value) {
    const HostControl* control = find_host_control(number);
    if (control == nullptr)
        return;
    tell(plugin.window_edits().change(number, value));
    // The type of an effect decides what its parameters are.
    if (control->is_list)
        plugin.host().rescan(CLAP_PARAM_RESCAN_TEXT);
}

void EditorClapWindow::programs_changed() {
    plugin.everything_changed();
    plugin.host().mark_dirty();
}

void EditorClapWindow::tell(bool is_queued) {
    if (is_queued)
        plugin.host().request_flush();
    else
        plugin.host().rescan(CLAP_PARAM_RESCAN_VALUES);
}

} // namespace

std::unique_ptr<ClapWindow> make_clap_window(ClapPlugin& plugin) {
    return std::make_unique<EditorClapWindow>(plugin);
}

} // namespace tarquil
