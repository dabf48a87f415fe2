// A host with windows: opens the plug-in's editor in windows of its own, plays and automates
// meanwhile, and counts what is left behind.
//
//   window_host cycles N       opens and closes the editor N times
//   window_host three, eight   so many instances that play, are automated, load, save, change
//                              programs and show their editors at once, a parent window destroyed
//                              first; made for the thread sanitizer
//   window_host small          a host whose own window stays smaller than the editor
//   window_host play           one editor for a user (or xdotool) until the input ends; prints
//                              what the host was told

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

#include "tests/windows/edited_plugin.h"
#include "tests/windows/window_modes.h"

namespace tarquil {

namespace {

std::atomic<int> begun{0};
std::atomic<int> automated{0};
std::atomic<int> ended{0};

intptr_t answer(AEffect*, int32_t opcode, int32_t, intptr_t, void*, float) {
    switch (opcode) {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterBeginEdit:
        begun++;
        return 1;
    case audioMasterAutomate:
        automated++;
        return 1;
    case audioMasterEndEdit:
        ended++;
        return 1;
    default:
        return 0;
    }
}

int run_cycles(int cycles) {
    Screen screen;
    EditedPlugin plugin(screen, 0, answer);
    return open_and_close(screen, plugin, cycles, [](int) { return nullptr; });
}

int run_many(int count) {
    Screen screen;
    std::vector<std::unique_ptr<EditedPlugin>> plugins;
    for (int i = 0; i < count; i++)
        plugins.push_back(std::make_unique<EditedPlugin>(screen, 100 * i, answer));
    const std::string bank = plugins[0]->host.save(false);
    std::atomic<bool> is_over{false};
    std::atomic<bool> is_sound{true};
    std::vector<std::thread> threads;
    for (auto& plugin : plugins) {
        threads.emplace_back([&is_over, &is_sound, &host = plugin->host] {
            for (unsigned block = 0; !is_over; block++) {
                host.midi(block % 2 == 0 ? 0x90 : 0x80, 40 + block % 40, 100);
                host.midi(0xC0 + block % 16, block % 128);
                for (const float sample : host.block(64)) {
                    if (!(std::fabs(sample) <= 1.0F))
                        is_sound = false;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    }
    // Each of these goes round all instances.
    const auto work = [&](auto&& on_one) {
        threads.emplace_back([&, on_one] {
            for (int round = 0; !is_over; round++) {
                on_one(plugins[size_t(round % count)]->host, round / count);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    };
    work([](PluginHost& host, int round) {
        for (int32_t i = 0; i < 173; i++)
            host.set(i, float((round + i) % 11) / 10);
    });
    work([&](PluginHost& host, int round) {
        if (round % 2 == 0)
            host.save(false);
        else
            host.load(bank, false);
    });
    work([](PluginHost& host, int round) {
        host.call(effSetProgram, 0, round % 128);
        char name[] = "renamed";
        host.call(effSetProgramName, 0, 0, name);
        host.text(effGetProgramNameIndexed, round % 128);
        host.text(effGetParamDisplay, round % 173);
    });
    bool is_open = true;
    const auto idle_all = [&] {
        for (auto& plugin : plugins)
            plugin->host.call(effEditIdle);
        pause_host();
    };
    for (auto& plugin : plugins) { // each is closed and opened once
        plugin->close();
        is_open = is_open && plugin->open();
        idle_all();
    }
    screen.destroy(plugins[0]->parent); // as some hosts do
    plugins[0]->parent = 0;
    for (int round = 0; round < 20; round++)
        idle_all();
    for (auto& plugin : plugins)
        plugin->close();
    is_over = true;
    for (std::thread& thread : threads)
        thread.join();
    if (!is_open)
        return fail("an editor does not open");
    if (!is_sound)
        return fail("the sound has lost its bounds");
    std::printf("ok %d instances with audio, automation, loads, saves, programs and windows, a "
                "parent that went first\n",
                count);
    return 0;
}

// The host's window lies in another one, which cuts it.
int run_small() {
    constexpr int IDLES = 100; // in which the host could have followed
    Screen screen;
    EditedPlugin plugin(screen, 0, answer);
    const Window outer = screen.make_window(1040, 776);
    XReparentWindow(screen.get_display(), plugin.parent, outer, 0, 0);
    if (!plugin.open())
        return fail("the editor does not open");
    const auto editor_width = [&](unsigned width, unsigned height) {
        XResizeWindow(screen.get_display(), outer, width, height);
        XSync(screen.get_display(), False);
        plugin.idle(IDLES);
        return screen.width_of(screen.children(plugin.parent).front());
    };
    if (editor_width(780, 776) != 780 || editor_width(1040, 582) != 780)
        return fail("the editor does not fit into what is seen of the host's window");
    if (editor_width(1200, 900) != 1040)
        return fail("the editor does not come back to its size");
    plugin.close();
    std::puts("ok the editor fits into a host's window that is cut, and comes back");
    return 0;
}

int run_for_a_user() {
    Screen screen;
    EditedPlugin plugin(screen, 0, answer);
    return show_to_a_user(
        plugin, [](int) {},
        [](ToldEdits& told) {
            told = {begun, automated, ended};
            return nullptr;
        });
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    return run_mode(argc, argv,
                    {{"cycles", [](int number) { return run_cycles(number); }},
                     {"three", [](int) { return run_many(3); }},
                     {"eight", [](int) { return run_many(8); }},
                     {"small", [](int) { return run_small(); }},
                     {"play", [](int) { return run_for_a_user(); }}});
}
