// What a desktop does to a window, where a virtual screen has none.
//
//   desk close WINDOW             the window manager's button is clicked
//   desk drop WINDOW X Y FILE     a file manager drops a file there, by XDND; X and Y in its pixels
//
// Prints "taken" or "refused" for a drop.

#include <chrono>
#include <cstring>
#include <string>
#include <thread>

#include <X11/Xatom.h>

#include "tests/windows/screen.h"

namespace tarquil {

namespace {

class Desk {
  public:
    explicit Desk(Window of_window) : window(of_window) {}

    void close() { send(window, window, "WM_PROTOCOLS", {long(screen.atom("WM_DELETE_WINDOW"))}); }

    int drop(int x, int y, const std::string& file) {
        Window child = None;
        int root_x = 0;
        int root_y = 0;
        XTranslateCoordinates(screen.get_display(), window, DefaultRootWindow(screen.get_display()),
                              x, y, &root_x, &root_y, &child);
        source = screen.make_window(10, 10, 1500);
        proxy = proxy_of(window);
        if (proxy_of(proxy) != proxy)
            return fail("the window has no proxy for drops");
        XSetSelectionOwner(screen.get_display(), screen.atom("XdndSelection"), source, CurrentTime);
        uris = "file://" + file + "\r\n";
        const auto mine = long(source);
        const auto type = long(screen.atom("text/uri-list"));
        send(proxy, window, "XdndEnter", {mine, 5L << 24, type});
        send(proxy, window, "XdndPosition",
             {mine, 0, long(root_x) << 16 | root_y, CurrentTime,
              long(screen.atom("XdndActionCopy"))});
        if ((wait_for("XdndStatus") & 1) == 0) {
            send(proxy, window, "XdndLeave", {mine});
            std::puts("refused");
            return 0;
        }
        send(proxy, window, "XdndDrop", {mine, 0, CurrentTime});
        std::puts((wait_for("XdndFinished") & 1) != 0 ? "taken" : "refused");
        return 0;
    }

  private:
    Window proxy_of(Window of_window) {
        Atom type = None;
        int bits = 0;
        unsigned long count = 0;
        unsigned long rest = 0;
        unsigned char* bytes = nullptr;
        XGetWindowProperty(screen.get_display(), of_window, screen.atom("XdndProxy"), 0, 1, False,
                           XA_WINDOW, &type, &bits, &count, &rest, &bytes);
        Window found = None;
        if (bytes != nullptr && count == 1)
            std::memcpy(&found, bytes, sizeof(found));
        if (bytes != nullptr)
            XFree(bytes);
        return found;
    }

    void send(Window to, Window about, const char* kind, std::initializer_list<long> data) {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = about;
        event.xclient.message_type = screen.atom(kind);
        event.xclient.format = 32;
        std::copy(data.begin(), data.end(), event.xclient.data.l);
        XSendEvent(screen.get_display(), to, False, NoEventMask, &event);
        XSync(screen.get_display(), False);
    }

    // The second item of such a message; 0 when none comes within five seconds.  The files are
    // named to who asks for them.
    long wait_for(const char* kind) {
        using namespace std::chrono_literals;
        for (int i = 0; i < 500; i++) {
            while (XPending(screen.get_display()) > 0) {
                XEvent event;
                XNextEvent(screen.get_display(), &event);
                if (event.type == SelectionRequest)
                    tell_files(event.xselectionrequest);
                if (event.type == ClientMessage && event.xclient.message_type == screen.atom(kind))
                    return event.xclient.data.l[1];
            }
            std::this_thread::sleep_for(10ms);
        }
        return 0;
    }

    void tell_files(const XSelectionRequestEvent& request) {
        XChangeProperty(screen.get_display(), request.requestor, request.property, request.target,
                        8, PropModeReplace, reinterpret_cast<const unsigned char*>(uris.data()),
                        int(uris.size()));
        XEvent event{};
        event.xselection.type = SelectionNotify;
        event.xselection.requestor = request.requestor;
        event.xselection.selection = request.selection;
        event.xselection.target = request.target;
        event.xselection.property = request.property;
        XSendEvent(screen.get_display(), request.requestor, False, NoEventMask, &event);
        XSync(screen.get_display(), False);
    }

    Screen screen;
    const Window window;
    Window source = None;
    Window proxy = None;
    std::string uris;
};

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    const std::string what = argc > 2 ? argv[1] : "";
    if (what == "close" && argc == 3) {
        Desk(std::stoul(argv[2])).close();
        return 0;
    }
    if (what == "drop" && argc == 6)
        return Desk(std::stoul(argv[2])).drop(std::stoi(argv[3]), std::stoi(argv[4]), argv[5]);
    return fail("usage: desk close WINDOW | desk drop WINDOW X Y FILE");
}
