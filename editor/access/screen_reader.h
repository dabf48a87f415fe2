// What makes a window known to screen readers: AT-SPI 2 over D-Bus, on connections of its own, so
// that a host's toolkit is not touched.
//
// Nobody pays who has no screen reader: a look at the desktop's session bus now and then, which
// says whether one wants to know.  Every call comes from the window's thread, and none waits longer
// than some milliseconds.

#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "editor/access/accessible_object.h"
#include "editor/access/bus.h"

namespace tarquil {

class ScreenReader {
  public:
    // The window as it is now, what is done to it, and its place on the screen.
    struct Window {
        std::function<Spoken()> describe;
        std::function<void(const std::function<void()>&)> act;
        std::function<WindowPlace()> place;
    };

    explicit ScreenReader(Window shown);
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;
    ~ScreenReader();

    void idle();

    // A key that goes to a window of its own, as X tells it.
    struct Keystroke {
        bool is_press = false;
        uint32_t symbol = 0;
        uint32_t code = 0;
        uint32_t modifiers = 0;
        std::string name;
    };
    // Whether a screen reader is told of keys at all.
    [[nodiscard]] bool hears_keys() const { return is_known; }
    // True when the reader keeps it for itself: it is one of its own commands.  Waits for its
    // answer, but not long.
    bool takes_key(const Keystroke& key);

  private:
    using Clock = std::chrono::steady_clock;

    void watch_desktop();
    void ask_status();
    void follow_status();
    void connect(const std::string& address);
    void introduce();
    void disconnect();
    void serve();
    void update();
    void tell(const AccessibleChange& change);
    void tell_place();
    void emit(unsigned number, const char* kind, const char* member, const std::string& detail,
              int first, int second, const char* type, const BusWriter::Fill& value);
    bool answer(const BusMessage& call, BusWriter& answer);

    const Window window;
    const DBusLibrary* dbus = nullptr;
    std::unique_ptr<Bus> desktop_bus;
    std::unique_ptr<Bus> bus; // of screen readers
    AccessibleTree tree;
    std::unique_ptr<AccessibleObject::World> world;
    bool is_wanted = false;
    bool is_asked = false; // for the address
    bool is_known = false;
    bool is_fresh = false; // the tree, since the last idle call
    Clock::time_point next_look;
    Clock::time_point next_update;
};

} // namespace tarquil
