// A CLAP host with windows: opens the plug-in's editor in windows of its own, plays meanwhile, and
// counts what is left behind.  As tests/windows/window_host.cpp for VST 2:
//
//   cycles N       opens and closes the editor N times
//   three          by timers, by descriptors and as a window of its own, with audio running
//   play           one editor for a user (or xdotool) until the input ends; prints what the host
//                  was told

#include <poll.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <thread>

#include "formats/clap/abi/posix_fd_support.h"
#include "tests/formats/clap/clap_host.h"
#include "tests/windows/process_entries.h"
#include "tests/windows/screen.h"
#include "tests/windows/user_at_work.h"

namespace tarquil {

namespace {

using namespace std::chrono_literals;

// What the plug-ins have asked the host's main loop for.
struct MainLoop {
    std::map<clap_id, const clap_host*> timers;
    std::map<int, const clap_host*> descriptors;
    clap_id next_timer = 1;
    uint32_t width = 0; // that was asked for last
    uint32_t height = 0;
    bool grants_size = true;
    int closed = 0;
};
MainLoop loop;

const clap_host_timer_support TIMERS = {
    .register_timer =
        [](const clap_host* host, uint32_t, clap_id* id) {
            *id = loop.next_timer++;
            loop.timers[*id] = host;
            return true;
        },
    .unregister_timer = [](const clap_host*, clap_id id) { return loop.timers.erase(id) == 1; }};

const ClapHostPosixFd DESCRIPTORS = {
    .register_fd =
        [](const clap_host* host, int fd, uint32_t flags) {
            loop.descriptors[fd] = host;
            return flags == CLAP_FD_CAN_READ;
        },
    .modify_fd = [](const clap_host*, int, uint32_t) { return false; },
    .unregister_fd = [](const clap_host*, int fd) { return loop.descriptors.erase(fd) == 1; }};

const clap_host_gui GUI = {.resize_hints_changed = [](const clap_host*) {},
                           .request_resize =
                               [](const clap_host*, uint32_t width, uint32_t height) {
                                   loop.width = width;
                                   loop.height = height;
                                   return loop.grants_size;
                               },
                           .request_show = [](const clap_host*) { return false; },
                           .request_hide = [](const clap_host*) { return false; },
                           .closed = [](const clap_host*, bool) { loop.closed++; }};

const void* with_timers(const std::string& id) {
    if (id == CLAP_EXT_TIMER_SUPPORT)
        return &TIMERS;
    return id == CLAP_EXT_GUI ? &GUI : nullptr;
}

const void* with_descriptors(const std::string& id) {
    if (id == CLAP_POSIX_FD_SUPPORT)
        return &DESCRIPTORS;
    return id == CLAP_EXT_GUI ? &GUI : nullptr;
}

// One round of the main loop: 15 ms.
void idle(const std::vector<ClapTestHost*>& hosts) {
    std::this_thread::sleep_for(15ms);
    for (ClapTestHost* host : hosts) {
        host->idle();
        for (const auto& [id, owner] : std::map(loop.timers)) {
            if (owner->host_data == host)
                host->get<clap_plugin_timer_support>(CLAP_EXT_TIMER_SUPPORT)
                    .on_timer(host->plugin, id);
        }
        for (const auto& [fd, owner] : std::map(loop.descriptors)) {
            pollfd waiting = {.fd = fd, .events = POLLIN, .revents = 0};
            if (owner->host_data == host && poll(&waiting, 1, 0) == 1)
                host->get<ClapPluginPosixFd>(CLAP_POSIX_FD_SUPPORT)
                    .on_fd(host->plugin, fd, CLAP_FD_CAN_READ);
        }
    }
}

// A plug-in whose editor is opened in the order that the interface says.
class EditedPlugin {
  public:
    EditedPlugin(Screen& shown_on, ClapTestHost::MoreExtensions extensions, bool floating = false)
        : host(false, extensions), screen(shown_on), is_floating(floating),
          gui(host.get<clap_plugin_gui>(CLAP_EXT_GUI)) {
        host.activate(48000, 256);
    }
    EditedPlugin(const EditedPlugin&) = delete;
    EditedPlugin& operator=(const EditedPlugin&) = delete;
    ~EditedPlugin() {
        close();
        host.deactivate();
    }

    bool open() {
        if (!gui.is_api_supported(host.plugin, CLAP_WINDOW_API_X11, is_floating) ||
            !gui.create(host.plugin, CLAP_WINDOW_API_X11, is_floating))
            return false;
        is_created = true;
        if (!is_floating) {
            if (gui.show(host.plugin))
                return false; // there is no parent yet
            uint32_t width = 0;
            uint32_t height = 0;
            gui.set_scale(host.plugin, 1.0);
            gui.get_size(host.plugin, &width, &height);
            parent = screen.make_window(int(width), int(height));
            clap_window window = {};
            window.api = CLAP_WINDOW_API_X11;
            window.x11 = parent;
            if (!gui.set_parent(host.plugin, &window))
                return false;
        } else {
            gui.suggest_title(host.plugin, "A floating window");
        }
        return gui.show(host.plugin);
    }
    void close() {
        if (is_created)
            gui.destroy(host.plugin);
        is_created = false;
        if (parent != 0)
            screen.destroy(parent);
        parent = 0;
    }

    ClapTestHost host;
    Screen& screen;
    const bool is_floating;
    const clap_plugin_gui& gui;
    Window parent = 0;
    bool is_created = false;
};

int run_cycles(int cycles) {
    Screen screen;
    EditedPlugin plugin(screen, with_timers);
    GrowthCheck growth;
    for (int i = 0; i < cycles; i++) {
        if (!plugin.open())
            return fail("the editor does not open");
        if (screen.children(plugin.parent).size() != 1)
            return fail("the editor's window is not in the host's");
        if (loop.timers.size() != 1)
            return fail("there is no timer");
        for (int round = 0; round < 2; round++)
            idle({&plugin.host});
        if (i % 2 == 0) {
            plugin.gui.hide(plugin.host.plugin);
            if (!screen.children(plugin.parent).empty() || !loop.timers.empty())
                return fail("a hidden window is still there");
            if (!plugin.gui.show(plugin.host.plugin))
                return fail("a hidden window does not come back");
        }
        plugin.close();
        if (!loop.timers.empty())
            return fail("a timer is left");
        if (i == 0)
            growth.note_first();
    }
    if (const char* const left = growth.find_growth())
        return fail(left);
    std::printf("ok %d openings and closings, no timer, thread or descriptor left\n", cycles);
    return 0;
}

// The window takes the sizes of its shape that the host sets, and those only.
const char* try_sizes(EditedPlugin& plugin) {
    const auto& gui = plugin.gui;
    const clap_plugin* const interface = plugin.host.plugin;
    if (!gui.can_resize(interface))
        return "the window has one size";
    for (const auto& [width, height] : {std::pair(1300U, 1300U), std::pair(3000U, 900U),
                                        std::pair(1U, 1U), std::pair(99999U, 99999U)}) {
        uint32_t fitting_width = width;
        uint32_t fitting_height = height;
        gui.adjust_size(interface, &fitting_width, &fitting_height);
        const uint32_t first_width = fitting_width;
        const uint32_t first_height = fitting_height;
        gui.adjust_size(interface, &fitting_width, &fitting_height);
        if (fitting_width != first_width || fitting_height != first_height)
            return "a size that fits does not stay";
        if (!gui.set_size(interface, fitting_width, fitting_height))
            return "a size that fits is not taken";
        idle({&plugin.host});
        idle({&plugin.host});
        gui.get_size(interface, &fitting_width, &fitting_height);
        if (fitting_width != first_width || fitting_height != first_height)
            return "the size is not the one that was set";
        if (plugin.screen.width_of(plugin.screen.children(plugin.parent)[0]) != first_width)
            return "the window is not as large as it says";
    }
    return loop.width == 0 ? nullptr : "the host is asked for what it has set itself";
}

int run_three() {
    Screen screen;
    EditedPlugin by_timers(screen, with_timers);
    EditedPlugin by_descriptors(screen, with_descriptors);
    EditedPlugin floating(screen, with_timers, true);
    EditedPlugin* const all[] = {&by_timers, &by_descriptors, &floating};
    for (EditedPlugin* plugin : all) {
        if (!plugin->open())
            return fail("an editor does not open");
    }
    std::atomic<bool> is_playing{true};
    std::thread audio([&] {
        for (unsigned block = 0; is_playing; block++) {
            for (EditedPlugin* plugin : all) {
                plugin->host.midi({0x90, uint8_t(40 + block % 40), 100});
                plugin->host.midi({0x80, uint8_t(40 + (block + 20) % 40), 0});
                plugin->host.set(0x1010, block / 50 % 4);
                plugin->host.set(block % 128, block % 10 * 12.0);
                plugin->host.render(256);
            }
        }
    });
    const char* wrong = try_sizes(by_descriptors);
    for (int round = 0; round < 100; round++) {
        if (round == 50) { // some hosts destroy their window first
            screen.destroy(by_timers.parent);
            by_timers.parent = 0;
        }
        idle({&by_timers.host, &by_descriptors.host, &floating.host});
        if (round % 10 == 0)
            by_descriptors.host.load(floating.host.save());
    }
    is_playing = false;
    audio.join();
    for (EditedPlugin* plugin : all)
        plugin->close();
    if (wrong != nullptr)
        return fail(wrong);
    if (!loop.descriptors.empty())
        return fail("a descriptor is left");
    for (EditedPlugin* plugin : all) {
        if (plugin->host.wrong_threads != 0)
            return fail("the host is called on a wrong thread");
    }
    const ClapTestHost without_timers;
    if (without_timers.get<clap_plugin_gui>(CLAP_EXT_GUI)
            .is_api_supported(without_timers.plugin, CLAP_WINDOW_API_X11, false))
        return fail("a window that nobody calls can not live");
    std::puts("ok by timers, by descriptors and floating, with audio, states and sizes, a parent "
              "that went first");
    return 0;
}

int run_for_a_user() {
    Screen screen;
    EditedPlugin plugin(screen, with_timers);
    if (!plugin.open())
        return fail("the editor does not open");
    std::printf("window %lu\n", plugin.parent);
    std::fflush(stdout);
    const std::string before = plugin.host.save();
    int begun = 0;
    int told = 0;
    int ended = 0;
    std::map<clap_id, double> values;
    for (int round = 0; is_user_at_work(); round++) {
        idle({&plugin.host});
        // Half of the time the host does not process, but flushes when it is asked to.
        if (round % 200 < 100)
            plugin.host.render(64);
        else if (plugin.host.flush_requests.exchange(0) > 0)
            plugin.host.flush();
        for (const HostEvent& event : plugin.host.output) {
            begun += event.header().type == CLAP_EVENT_PARAM_GESTURE_BEGIN;
            ended += event.header().type == CLAP_EVENT_PARAM_GESTURE_END;
            if (event.header().type == CLAP_EVENT_PARAM_VALUE) {
                told++;
                const auto& value = event.as<clap_event_param_value>();
                values[value.param_id] = value.value;
            }
        }
        plugin.host.output.clear();
    }
    for (const auto& [id, value] : values) {
        if (plugin.host.value(id) != value)
            return fail("the host has another value than the plug-in");
    }
    plugin.close();
    std::printf("begun %d automated %d ended %d, bank %s\n", begun, told, ended,
                plugin.host.save() == before ? "as before" : "changed");
    return 0;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "cycles" && argc == 3)
        return run_cycles(std::atoi(argv[2]));
    if (mode == "three")
        return run_three();
    if (mode == "play")
        return run_for_a_user();
    return fail("usage: clap_window_host cycles N | three | play");
}
