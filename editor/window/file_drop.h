// Files dropped from the desktop onto a window, which the toolkit does not take on X11.
//
// XDND, version 5 (https://freedesktop.org/wiki/Specifications/XDND).  The toolkit's own connection
// gets none of its messages: a proxy window of this one does, which the protocol has for that.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "editor/window/x_error_trap.h"

namespace tarquil {

class FileDrop {
  public:
    explicit FileDrop(uintptr_t dropped_on);
    FileDrop(const FileDrop&) = delete;
    FileDrop& operator=(const FileDrop&) = delete;
    ~FileDrop();

    // Places are in the window's pixels.  Whether a drop there would be taken.
    std::function<bool(int x, int y)> moved;
    std::function<void()> left;
    std::function<void(const std::vector<std::string>& paths, int x, int y)> dropped;

    // Handles what has come; within an XErrorTrap, since the other program may go at any time.
    void look();

  private:
    using Atom = unsigned long;

    [[nodiscard]] Atom atom(const char* name) const;
    void set_property(uintptr_t of_window, const char* name, Atom type, unsigned long value) const;
    // `data` is a message's five items.
    void take_message(Atom kind, const long* data);
    void enter(const long* data);
    void move(const long* data);
    void take_files(Atom property);
    void reply(const char* kind, bool is_taken) const;
    [[nodiscard]] std::string read_property(uintptr_t of_window, Atom property, Atom type) const;

    const XConnection connection;
    const uintptr_t window;
    uintptr_t proxy = 0;
    uintptr_t source = 0; // of the drag that is over the window
    bool has_files = false;
    bool is_welcome = false;
    int at_x = 0;
    int at_y = 0;
};

} // namespace tarquil
