// A VST 3 host with windows: opens the plug-in's editor in windows of its own, plays meanwhile, and
// counts what is left behind.  As tests/windows/window_host.cpp for VST 2:
//
//   cycles N       opens and closes the editor N times
//   three          three instances with audio, states and sizes, a parent window destroyed first
//   play           one editor for a user (or xdotool) until the input ends; prints what the host
//                  was told

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <thread>

#include "formats/vst3/abi/view.h"
#include "tests/formats/vst3/vst3_host.h"
#include "tests/windows/window_modes.h"

namespace tarquil::vst3 {

namespace {

using namespace std::chrono_literals;

class HostLoop final : public HostObject<RunLoop> {
  public:
    Result register_event_handler(EventHandler* handler, int descriptor) override {
        descriptors.emplace_back(handler, descriptor);
        return OK;
    }
    Result unregister_event_handler(EventHandler* handler) override {
        return std::erase_if(descriptors, [=](auto& one) { return one.first == handler; }) > 0 ? OK
                                                                                               : NO;
    }
    Result register_timer(TimerHandler* handler, uint64_t milliseconds) override {
        timers.push_back(handler);
        return milliseconds > 0 ? OK : BAD_ARGUMENT;
    }
    Result unregister_timer(TimerHandler* handler) override {
        return std::erase(timers, handler) == 1 ? OK : NO;
    }

    // One round: 15 ms.
    void idle() {
        std::this_thread::sleep_for(15ms);
        for (TimerHandler* const handler : std::vector(timers))
            handler->on_timer();
        for (const auto& [handler, descriptor] : std::vector(descriptors)) {
            pollfd waiting = {.fd = descriptor, .events = POLLIN, .revents = 0};
            if (poll(&waiting, 1, 0) == 1)
                handler->on_descriptor(descriptor);
        }
    }
    [[nodiscard]] bool is_unused() const {
        return timers.empty() && descriptors.empty() && references == 0;
    }

    std::vector<TimerHandler*> timers;
    std::vector<std::pair<EventHandler*, int>> descriptors;
};

// The plug-in's frame in the host's window, which follows what the user does in the plug-in's.
class HostFrame final : public HostObject<PlugFrame> {
  public:
    explicit HostFrame(HostLoop* with_loop) : loop(with_loop) {}

    Result query_interface(const uint8_t* id, void** object) override {
        return loop != nullptr && is_id(id, RunLoop::ID)
                   ? loop->query_interface(id, object)
                   : HostObject<PlugFrame>::query_interface(id, object);
    }
    Result resize_view(View* view, Rectangle* size) override {
        num_asked++;
        asked_width = size->right - size->left;
        return grants_size ? view->on_size(size) : NO;
    }

    bool grants_size = true;
    int num_asked = 0;
    int32_t asked_width = 0;

  private:
    HostLoop* const loop;
};

void* window_argument(Window window) {
    return reinterpret_cast<void*>(window); // NOLINT(performance-no-int-to-ptr): the interface's
}

class EditedPlugin {
  public:
    explicit EditedPlugin(Screen& shown_on) : screen(shown_on) {
        host.controller->set_component_handler(&handler);
    }
    EditedPlugin(const EditedPlugin&) = delete;
    EditedPlugin& operator=(const EditedPlugin&) = delete;
    ~EditedPlugin() {
        close();
        host.controller->set_component_handler(nullptr);
    }

    bool open(float scale = 1) {
        view = host.controller->create_view(EDITOR_VIEW);
        if (view == nullptr || view->is_platform_supported(X11_PLATFORM) != OK)
            return false;
        const Held<ContentScale> scaled(view);
        view->set_frame(&frame);
        scaled->set_scale(scale);
        parent = screen.make_window(width(), 1000);
        return view->attached(window_argument(parent), X11_PLATFORM) == OK;
    }
    // Every third time as hosts do that only release the view.
    const char* close() {
        if (view == nullptr)
            return nullptr;
        const char* wrong = nullptr;
        const bool does_remove = num_closed++ % 3 != 2;
        if (does_remove && view->removed() != OK)
            wrong = "the view is not removed";
        if (does_remove && view->removed() == OK)
            wrong = "the view is removed twice";
        view->set_frame(nullptr);
        if (view->release() != 0)
            wrong = "the view is still held by someone";
        view = nullptr;
        if (parent != 0 && !screen.children(parent).empty())
            wrong = "a window is left";
        if (parent != 0)
            screen.destroy(parent);
        parent = 0;
        if (!loop.is_unused() || frame.references != 0)
            wrong = "the host's loop or frame is still held";
        return wrong;
    }
    void idle() { loop.idle(); }
    std::string save() { return host.save(); }

    int width() {
        Rectangle size{};
        view->get_size(&size);
        return size.right - size.left;
    }
    // Of the window itself.
    int shown_width() {
        const std::vector<Window> windows = screen.children(parent);
        return windows.empty() ? 0 : int(screen.width_of(windows[0]));
    }
    // Widths and heights, at some place.
    using Size = std::pair<int, int>;
    [[nodiscard]] Size fit(const Size& wanted) const {
        Rectangle size{10, 20, 10 + wanted.first, 20 + wanted.second};
        view->check_size(&size);
        return {size.right - 10, size.bottom - 20};
    }
    [[nodiscard]] bool set_size(const Size& size) const {
        Rectangle place{10, 20, 10 + size.first, 20 + size.second};
        return view->on_size(&place) == OK;
    }
    bool takes_size(const Size& wanted) { return takes_width(wanted.first); }
    // Both, within the two seconds that a busy screen may take.
    bool takes_width(int wanted) {
        const auto is_taken = [&] { return width() == wanted && shown_width() == wanted; };
        for (int idles = 0; idles < 130 && !is_taken(); idles++)
            loop.idle();
        return is_taken();
    }

    Screen& screen;
    HostLoop loop;
    HostFrame frame{&loop};
    HostHandler handler;
    Vst3Host host{48000};
    View* view = nullptr;
    Window parent = 0;
    int num_closed = 0;
};

// What there is beside an open editor: another view of the same plug-in.
const char* try_second_view(EditedPlugin& plugin) {
    View* const second = plugin.host.controller->create_view(EDITOR_VIEW);
    HostLoop loop;
    HostFrame frame(&loop);
    second->set_frame(&frame);
    const Window parent = plugin.screen.make_window(400, 300);
    const int width = plugin.width();
    const char* wrong = nullptr;
    if (second->attached(window_argument(parent), X11_PLATFORM) == OK)
        wrong = "two views have the window at once";
    Rectangle size{0, 0, 800, 600};
    if (second->on_size(&size) == OK || plugin.width() != width)
        wrong = "a view without the window changes its size";
    if (second->removed() == OK || !loop.is_unused())
        wrong = "a view that was refused counts as attached";
    second->release();
    plugin.screen.destroy(parent);
    return wrong;
}

// What can not become a window.
const char* try_odd_views(EditedPlugin& plugin) {
    if (plugin.host.controller->create_view("other") != nullptr)
        return "there is a view of another kind";
    View* const view = plugin.host.controller->create_view(EDITOR_VIEW);
    HostFrame without_loop(nullptr);
    const Window parent = plugin.screen.make_window(400, 300);
    const char* wrong = nullptr;
    if (view->attached(window_argument(parent), X11_PLATFORM) == OK)
        wrong = "a window that nobody calls is shown";
    view->set_frame(&without_loop);
    if (view->attached(window_argument(parent), X11_PLATFORM) == OK)
        wrong = "a window without timers is shown";
    view->set_frame(&plugin.frame);
    if (view->attached(nullptr, X11_PLATFORM) == OK ||
        view->attached(window_argument(parent), "HWND") == OK)
        wrong = "a window is shown nowhere";
    if (!plugin.loop.is_unused() || !plugin.screen.children(parent).empty())
        wrong = "a refused view leaves something";
    view->release();
    plugin.screen.destroy(parent);
    return wrong;
}

int run_cycles(int cycles) {
    Screen screen;
    EditedPlugin plugin(screen);
    if (const char* wrong = try_odd_views(plugin))
        return fail(wrong);
    return open_and_close(screen, plugin, cycles, [&](int round) -> const char* {
        if (plugin.loop.timers.size() != 1)
            return "there is no timer";
        // The same view once more.
        if (round % 2 == 0 &&
            (plugin.view->removed() != OK || !plugin.loop.is_unused() ||
             plugin.view->attached(window_argument(plugin.parent), X11_PLATFORM) != OK))
            return "a removed view can not be attached again";
        return round == 0 ? try_second_view(plugin) : nullptr;
    });
}

// Clicks at the top right, where the size is chosen, until the host is asked for another one.
bool choose_size(EditedPlugin& plugin) {
    const Window window = plugin.screen.children(plugin.parent)[0];
    const int before = plugin.frame.num_asked;
    const int width = plugin.width();
    for (int x = width - width / 25; x > width / 2; x -= width / 25) {
        for (int y = width / 13; y < width / 4; y += width / 50) {
            plugin.screen.click(window, x, width / 45);
            plugin.loop.idle();
            plugin.screen.click(window, x, y);
            plugin.loop.idle();
            plugin.loop.idle();
            if (plugin.frame.num_asked != before)
                return true;
        }
    }
    return false;
}

const char* try_user_sizes(EditedPlugin& plugin) {
    Rectangle size{0, 0, 1040, 2000};
    plugin.view->on_size(&size);
    plugin.loop.idle();
    if (!choose_size(plugin))
        return "the host is not asked for the size that the user chooses";
    if (plugin.frame.asked_width == 1040 || !plugin.takes_width(plugin.frame.asked_width))
        return "the window has not the size that the host has granted";
    const int granted = plugin.width();
    plugin.frame.grants_size = false;
    if (!choose_size(plugin))
        return "the host is not asked a second time";
    plugin.loop.idle();
    plugin.frame.grants_size = true;
    return plugin.takes_width(granted) ? nullptr
                                       : "the window has a size that the host has refused";
}

// A host that hides its window, and shows it with the size that it had at first.
const char* try_showing_again(EditedPlugin& plugin, int width_at_first) {
    constexpr int IDLES_TO_BE_SEEN = 40;
    const int chosen = plugin.width();
    if (chosen == width_at_first)
        return "no other size was chosen";
    const auto idle = [&] {
        for (int i = 0; i < IDLES_TO_BE_SEEN; i++)
            plugin.loop.idle();
    };
    idle();
    plugin.frame.num_asked = 0;
    plugin.screen.show(plugin.parent, false);
    Rectangle at_first{0, 0, width_at_first, width_at_first};
    plugin.view->on_size(&at_first);
    plugin.screen.show(plugin.parent, true);
    idle();
    if (!plugin.takes_width(chosen) || plugin.frame.asked_width != chosen)
        return "the size that was chosen is not asked for";
    plugin.view->on_size(&at_first);
    if (!plugin.takes_width(width_at_first) || plugin.frame.num_asked != 1)
        return "the size of the user's in the host is not taken";
    return nullptr;
}

int run_three() {
    // A user who has never chosen a size.
    const char* const settings = std::getenv("XDG_CONFIG_HOME");
    const std::string fresh = std::string(settings != nullptr ? settings : "/tmp") + "/three";
    setenv("XDG_CONFIG_HOME", fresh.c_str(), 1);
    Screen screen;
    EditedPlugin sized(screen);
    EditedPlugin orphan(screen);
    EditedPlugin loaded(screen);
    EditedPlugin* const all[] = {&sized, &orphan, &loaded};
    const int plain_width = [&] {
        View* const view = sized.host.controller->create_view(EDITOR_VIEW);
        Rectangle size{};
        view->get_size(&size);
        view->release();
        return size.right - size.left;
    }();
    for (EditedPlugin* plugin : all) {
        if (!plugin->open(plugin == &sized ? 1.5F : 1.0F))
            return fail("an editor does not open");
    }
    if (sized.width() != plain_width * 3 / 2 || sized.shown_width() != sized.width() ||
        orphan.shown_width() != plain_width)
        return fail("the host's scale is not the window's");
    if (Held<ContentScale>(sized.view)->set_scale(2) == OK)
        return fail("an open window takes another scale");
    const char* wrong = nullptr;
    {
        const SoundMeanwhile sound([&, left = std::vector<float>(256),
                                    right = std::vector<float>(256)](unsigned block) mutable {
            for (EditedPlugin* plugin : all) {
                plugin->host.add({0, {0x90, uint8_t(40 + block % 40), 100}});
                plugin->host.add({9, {0x80, uint8_t(40 + (block + 20) % 40), 0}});
                plugin->host.add({10, {0xC0, uint8_t(block / 50 % 4), 0}});
                plugin->host.changes.add(block % 128, 100, block % 10 / 9.0);
                plugin->host.run(left.data(), right.data(), 256);
            }
        });
        wrong = sized.view->can_resize() == OK ? try_host_sizes(sized) : "the window has one size";
        if (sized.frame.num_asked != 0)
            wrong = "the host is asked for what it has set itself";
        if (wrong == nullptr)
            wrong = try_user_sizes(sized);
        if (wrong == nullptr)
            wrong = try_showing_again(sized, plain_width * 3 / 2);
        for (int round = 0; round < 60; round++) {
            if (round == 30) { // some hosts destroy their window first
                screen.destroy(orphan.parent);
                orphan.parent = 0;
            }
            for (EditedPlugin* plugin : all)
                plugin->loop.idle();
            if (round % 10 == 0 && !loaded.host.load(sized.host.save()))
                wrong = "a state does not load";
        }
    }
    // Some hosts end the controller before its view.
    loaded.host.controller->terminate();
    loaded.loop.idle();
    for (EditedPlugin* plugin : all) {
        const char* const left = plugin->close();
        wrong = wrong == nullptr ? left : wrong;
    }
    if (wrong != nullptr)
        return fail(wrong);
    std::puts("ok three editors with audio and states, sizes of host and user, a scale, a parent "
              "and a controller that went first");
    return 0;
}

int run_for_a_user() {
    Screen screen;
    EditedPlugin plugin(screen);
    const auto each_round = [&](int) {
        // What the window has told comes back with a block, as from a host.
        std::swap(plugin.host.changes.queues, plugin.handler.edits.queues);
        plugin.host.run(64);
    };
    return show_to_a_user(plugin, each_round, [&](ToldEdits& told) -> const char* {
        std::set<std::string> known;
        for (int32_t i = 0; i < plugin.host.controller->get_parameter_count(); i++) {
            ParameterInfo info{};
            plugin.host.controller->get_parameter_info(i, &info);
            known.insert(std::to_string(info.id));
        }
        std::string open_gesture;
        for (const std::string& word : plugin.handler.told) {
            const std::string id = word.substr(word.find(' ') + 1);
            const bool begins = word.starts_with("begin");
            told.begun += begins;
            told.automated += word.starts_with("perform");
            told.ended += word.starts_with("end");
            if (begins != open_gesture.empty() || (!begins && id != open_gesture))
                return "an edit is told outside of its gesture";
            if (begins || word.starts_with("end"))
                open_gesture = begins ? id : "";
            if (!known.contains(id))
                return "a parameter is told that there is not";
        }
        return nullptr;
    });
}

} // namespace

} // namespace tarquil::vst3

int main(int argc, char** argv) {
    using namespace tarquil;
    return run_mode(argc, argv,
                    {{"cycles", [](int number) { return vst3::run_cycles(number); }},
                     {"three", [](int) { return vst3::run_three(); }},
                     {"play", [](int) { return vst3::run_for_a_user(); }}});
}
