// Shows the plug-in's window in one of its own for some seconds while it plays, and looks whether
// the ports follow it: window_host SECONDS

#include <dlfcn.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <lv2/instance-access/instance-access.h>
#include <lv2/ui/ui.h>

#include "formats/lv2/lv2_names.h"
#include "tests/formats/lv2/lv2_host.h"
#include "tests/windows/screen.h"

namespace tarquil {

namespace {

struct Shown {
    Lv2Host host{48000};
    std::vector<float> written = std::vector<float>(NUM_FIXED_LV2_PORTS + lv2_controls().size());
    int num_written = 0;
    int width = 0;
};

void write_port(LV2UI_Controller shown, uint32_t port, uint32_t size, uint32_t protocol,
                const void* value) {
    Shown& self = *static_cast<Shown*>(shown);
    if (size != sizeof(float) || protocol != 0 || port < NUM_FIXED_LV2_PORTS)
        std::exit(fail("a port is written that is no control"));
    const uint32_t control = port - NUM_FIXED_LV2_PORTS;
    self.written[port] = *static_cast<const float*>(value);
    // As a host does, a block later.
    self.host.control(lv2_controls()[control].number()) = self.written[port];
    self.num_written++;
}

int resize(LV2UI_Feature_Handle shown, int width, int /*height*/) {
    static_cast<Shown*>(shown)->width = width;
    return 0;
}

int run(int seconds) {
    Shown shown;
    if (!shown.host.is_loaded())
        return fail("the plug-in is not loaded");
    Screen screen;
    const Window parent = screen.make_window(1100, 720);

    void* const module = dlopen(LV2_BUNDLE "tarquil.so", RTLD_NOW);
    const auto descriptor_of =
        reinterpret_cast<LV2UI_DescriptorFunction>(dlsym(module, "lv2ui_descriptor"));
    const LV2UI_Descriptor* const ui = descriptor_of(0);
    if (descriptor_of(1) != nullptr)
        return fail("more windows than one");
    LV2UI_Resize resizer{&shown, resize};
    // NOLINTNEXTLINE(performance-no-int-to-ptr): how the interface takes a window's number
    const LV2_Feature parent_feature{LV2_UI__parent, reinterpret_cast<void*>(parent)};
    const LV2_Feature resize_feature{LV2_UI__resize, &resizer};
    const LV2_Feature access{LV2_INSTANCE_ACCESS_URI,
                             lilv_instance_get_handle(shown.host.get_instance())};
    const LV2_Feature* const with_all[] = {&parent_feature, &resize_feature, &access, nullptr};
    const LV2_Feature* const without[] = {&parent_feature, nullptr};
    LV2UI_Widget widget = nullptr;
    if (ui->instantiate(ui, TARQUIL_LV2_URI, LV2_BUNDLE, write_port, &shown, &widget, without) !=
        nullptr)
        return fail("a window without its plug-in");
    LV2UI_Handle window = nullptr;
    const auto* const idle =
        static_cast<const LV2UI_Idle_Interface*>(ui->extension_data(LV2_UI__idleInterface));
    for (int i = 0; i < 20; i++) {
        if (window != nullptr)
            ui->cleanup(window);
        window =
            ui->instantiate(ui, TARQUIL_LV2_URI, LV2_BUNDLE, write_port, &shown, &widget, with_all);
        if (window == nullptr || widget == nullptr || shown.width == 0)
            return fail("no window");
        idle->idle(window);
    }
    if (shown.num_written < int(lv2_controls().size()))
        return fail("the ports are not told what is");
    std::printf("window\n");
    std::fflush(stdout);
    shown.num_written = 0;
    shown.host.add_program(0, 3);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        if (idle->idle(window) != 0)
            return fail("the window has closed itself");
        shown.host.run(512);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ui->cleanup(window);
    if (shown.num_written == 0)
        return fail("the wheel reached no port");
    // What the ports say is what the plug-in has.
    const std::string before = shown.host.save();
    shown.host.run(64);
    if (shown.host.save() != before)
        return fail("the ports overwrite what the window has set");
    std::printf("ok %d values were written to ports\n", shown.num_written);
    screen.destroy(parent);
    dlclose(module);
    return 0;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    return tarquil::run(argc > 1 ? int(std::strtol(argv[1], nullptr, 10)) : 1);
}
