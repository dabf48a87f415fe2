// A CLAP host with windows: opens the plug-in's editor in windows of its own, plays meanwhile, and
// counts what is left behind.  As tests/windows/window_host.cpp for VST 2:
//
//   cycles N       opens and closes the editor N times
//   three          by timers, by descriptors and as a window of its own, with audio running
//   play           one editor for a user (or xdotool) until the input ends; prints what the host
//                  was told

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <thread>

#include "formats/clap/abi/posix_fd_support.h"
#include "tests/formats/clap/clap_host.h"
#include "tests/windows/window_modes.h"

namespace tarquil {

namespace {

using namespace std::chrono_literals;

// What the plug-ins have asked the host's main loop for.
struct MainLoop {
    std::map<clap_id, const clap_host*> timers;
    std::map<int, const clap_host*> descriptors;
    clap_id next_timer = 1;
    bool is_asked_for_size = false;
};
MainLoop loop;

ClapTestHost* owner_of(const std::pair<const clap_id, const clap_host*>& timer) {
    return static_cast<ClapTestHost*>(timer.second->host_data);
}

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
                               [](const clap_host*, uint32_t, uint32_t) {
                                   loop.is_asked_for_size = true;
                                   return true;
                               },
                           .request_show = [](const clap_host*) { return false; },
                           .request_hide = [](const clap_host*) { return false; },
                           .closed = [](const clap_host*, bool) {}};

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
        host.activate(48000);
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
    const char* close() {
        if (is_created)
            gui.destroy(host.plugin);
        is_created = false;
        if (parent != 0)
            screen.destroy(parent);
        parent = 0;
        return std::ranges::count(loop.timers, &host, owner_of) == 0 ? nullptr : "a timer is left";
    }
    void idle() { tarquil::idle({&host}); }
    std::string save() { return host.save(); }

    // Widths and heights.
    using Size = std::pair<int, int>;
    [[nodiscard]] Size fit(const Size& wanted) const {
        auto width = uint32_t(wanted.first);
        auto height = uint32_t(wanted.second);
        gui.adjust_size(host.plugin, &width, &height);
        return {width, height};
    }
    [[nodiscard]] bool set_size(const Size& size) const {
        return gui.set_size(host.plugin, uint32_t(size.first), uint32_t(size.second));
    }
    bool takes_size(const Size& wanted) {
        idle();
        idle();
        uint32_t width = 0;
        uint32_t height = 0;
        gui.get_size(host.plugin, &width, &height);
        return Size(width, height) == wanted &&
               int(screen.width_of(screen.children(parent)[0])) == wanted.first;
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
    return open_and_close(screen, plugin, cycles, [&](int round) -> const char* {
        if (loop.timers.size() != 1)
            return "there is no timer";
        if (round % 2 != 0)
            return nullptr;
        plugin.gui.hide(plugin.host.plugin);
        if (!screen.children(plugin.parent).empty() || !loop.timers.empty())
            return "a hidden window is still there";
        return plugin.gui.show(plugin.host.plugin) ? nullptr : "a hidden window does not come back";
    });
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
    const char* wrong = nullptr;
    {
        const SoundMeanwhile sound([&](unsigned block) {
            for (EditedPlugin* plugin : all) {
                plugin->host.midi({0x90, uint8_t(40 + block % 40), 100});
                plugin->host.midi({0x80, uint8_t(40 + (block + 20) % 40), 0});
                plugin->host.set(0x1010, block / 50 % 4);
                plugin->host.set(block % 128, block % 10 * 12.0);
                plugin->host.render(256);
            }
        });
        if (!by_descriptors.gui.can_resize(by_descriptors.host.plugin))
            wrong = "the window has one size";
        else
            wrong = try_host_sizes(by_descriptors);
        if (loop.is_asked_for_size)
            wrong = "the host is asked for what it has set itself";
        for (int round = 0; round < 100; round++) {
            if (round == 50) { // some hosts destroy their window first
                screen.destroy(by_timers.parent);
                by_timers.parent = 0;
            }
            idle({&by_timers.host, &by_descriptors.host, &floating.host});
            if (round % 10 == 0)
                by_descriptors.host.load(floating.host.save());
        }
    }
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
    const auto each_round = [&](int round) {
        // Half of the time the host does not process, but flushes when it is asked to.
        if (round % 200 < 100)
            plugin.host.render(64);
        else if (plugin.host.flush_requests.exchange(0) > 0)
            plugin.host.flush();
    };
    return show_to_a_user(plugin, each_round, [&](ToldEdits& told) -> const char* {
        std::map<clap_id, double> values;
        for (const HostEvent& event : plugin.host.output) {
            told.begun += event.header().type == CLAP_EVENT_PARAM_GESTURE_BEGIN;
            told.ended += event.header().type == CLAP_EVENT_PARAM_GESTURE_END;
            if (event.header().type == CLAP_EVENT_PARAM_VALUE) {
                told.automated++;
                const auto& value = event.as<clap_event_param_value>();
                values[value.param_id] = value.value;
            }
        }
        for (const auto& [id, value] : values) {
            if (plugin.host.value(id) != value)
                return "the host has another value than the plug-in";
        }
        return nullptr;
    });
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    return run_mode(argc, argv,
                    {{"cycles", [](int number) { return run_cycles(number); }},
                     {"three", [](int) { return run_three(); }},
                     {"play", [](int) { return run_for_a_user(); }}});
}
