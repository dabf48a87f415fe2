// The editor in an LV2 host's window.

#include <array>
#include <cstring>
#include <memory>

#include <lv2/core/lv2.h>
#include <lv2/instance-access/instance-access.h>
#include <lv2/ui/ui.h>

#include "formats/lv2/lv2_names.h"
#include "formats/lv2/lv2_synth.h"
#include "frame/editor_frame.h"
#include "frame/host_synth.h"

namespace tarquil {

namespace {

// The control ports follow what the window shows.
class Lv2Window : public EditListener {
  public:
    Lv2Window(Lv2Synth& shown, LV2UI_Write_Function write_port, LV2UI_Controller host_handle)
        : synth(shown), write(write_port), host(host_handle), edited_synth(shown.player(), *this),
          frame(shown.player(), edited_synth), shown_changes(shown.player().num_changes()) {}

    bool open(uintptr_t parent, const LV2UI_Resize* resize) {
        if (!frame.open(parent))
            return false;
        if (resize != nullptr) {
            resize->ui_resize(resize->handle, frame.width(), frame.height());
            frame.on_resize = [resize](int width, int height) {
                resize->ui_resize(resize->handle, width, height);
            };
        }
        for (size_t i = 0; i < told.size(); i++)
            told[i] = -1;
        tell_ports();
        return true;
    }

    [[nodiscard]] LV2UI_Widget widget() {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): what LV2 calls a widget is X11's number
        return LV2UI_Widget(frame.get_window()->native_handle());
    }

    // True when the window is to be closed.
    bool idle() {
        frame.idle();
        const uint32_t changes = synth.player().num_changes();
        if (changes != shown_changes)
            tell_ports();
        shown_changes = changes;
        return frame.get_window() == nullptr || frame.get_window()->is_closed_by_user();
    }

    void begin_edit(unsigned /*number*/) override {}
    void edited(unsigned number, int value) override { tell_port(number, value); }
    void end_edit(unsigned /*number*/) override {}
    void programs_changed() override { tell_ports(); }

  private:
    void tell_port(unsigned number, int byte) {
        if (told[number] == byte)
            return;
        told[number] = byte;
        const uint32_t port = lv2_port_of(number);
        if (port == 0)
            return;
        synth.hold_port(port);
        const float value = lv2_controls()[port - NUM_FIXED_LV2_PORTS].value(byte);
        write(host, port, sizeof(value), 0, &value);
    }

    void tell_ports() {
        for (const Lv2Control& control : lv2_controls())
            tell_port(control.number(), synth.player().get_controller(control.number()));
    }

    Lv2Synth& synth;
    const LV2UI_Write_Function write;
    const LV2UI_Controller host;
    HostSynth edited_synth;
    EditorFrame frame;
    uint32_t shown_changes;
    std::array<int, NUM_CONTROLLERS> told{};
};

LV2UI_Handle instantiate(const LV2UI_Descriptor* /*descriptor*/, const char* plugin_uri,
                         const char* /*bundle*/, LV2UI_Write_Function write,
                         LV2UI_Controller controller, LV2UI_Widget* widget,
                         const LV2_Feature* const* features) {
    if (std::strcmp(plugin_uri, TARQUIL_LV2_URI) != 0)
        return nullptr;
    uintptr_t parent = 0;
    const LV2UI_Resize* resize = nullptr;
    Lv2Synth* synth = nullptr;
    for (; features != nullptr && *features != nullptr; features++) {
        const char* const name = (*features)->URI;
        if (std::strcmp(name, LV2_UI__parent) == 0)
            parent = uintptr_t((*features)->data);
        else if (std::strcmp(name, LV2_UI__resize) == 0)
            resize = static_cast<const LV2UI_Resize*>((*features)->data);
        else if (std::strcmp(name, LV2_INSTANCE_ACCESS_URI) == 0)
            synth = static_cast<Lv2Synth*>((*features)->data);
    }
    if (synth == nullptr)
        return nullptr;
    auto window = std::make_unique<Lv2Window>(*synth, write, controller);
    if (!window->open(parent, resize))
        return nullptr;
    *widget = window->widget();
    return window.release();
}

void close_ui(LV2UI_Handle handle) {
    delete static_cast<Lv2Window*>(handle);
}

int idle(LV2UI_Handle handle) {
    return static_cast<Lv2Window*>(handle)->idle() ? 1 : 0;
}

const void* ui_extension_data(const char* name) {
    static const LV2UI_Idle_Interface IDLE = {idle};
    return std::strcmp(name, LV2_UI__idleInterface) == 0 ? &IDLE : nullptr;
}

} // namespace

} // namespace tarquil

LV2_SYMBOL_EXPORT const LV2UI_Descriptor* lv2ui_descriptor(uint32_t index) {
    // The ports' values come from the player itself.
    static const LV2UI_Descriptor DESCRIPTOR = {TARQUIL_LV2_UI_URI, tarquil::instantiate,
                                                tarquil::close_ui, nullptr,
                                                tarquil::ui_extension_data};
    return index == 0 ? &DESCRIPTOR : nullptr;
}
