// How soon the editor shows itself, and what the user does: a host that calls idle every 16 ms.
//
//   response_host N    opens the editor and turns the wheel over a knob, N times each; prints the
//                      times, and fails when a picture takes more idle calls than it may

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tests/windows/edited_plugin.h"

#include <X11/Xutil.h>

namespace tarquil {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int MOST_IDLES = 2;
constexpr int IDLES_UNTIL_STILL = 60; // hover and all that comes by itself
constexpr int KNOB_X = 543;           // oscillator 1's coarse tune, on the first page
constexpr int KNOB_Y = 194;

intptr_t answer(AEffect*, int32_t opcode, int32_t, intptr_t, void*, float) {
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

std::string pixels_of(Screen& screen, Window window) {
    XWindowAttributes attributes;
    Display* const display = screen.get_display();
    XSync(display, False);
    XGetWindowAttributes(display, window, &attributes);
    XImage* const image = XGetImage(display, window, 0, 0, unsigned(attributes.width),
                                    unsigned(attributes.height), AllPlanes, ZPixmap);
    std::string pixels(image->data, size_t(image->bytes_per_line) * size_t(image->height));
    XDestroyImage(image);
    return pixels;
}

// The host's time without what looking at the screen takes.
class HostClock {
  public:
    double seconds() const {
        return std::chrono::duration<double>(Clock::now() - start - looking).count();
    }
    std::string look(Screen& screen, Window window) {
        const Clock::time_point before = Clock::now();
        std::string seen = pixels_of(screen, window);
        looking += Clock::now() - before;
        return seen;
    }

  private:
    const Clock::time_point start = Clock::now();
    Clock::duration looking{};
};

struct Waits {
    std::vector<double> milliseconds;
    std::vector<int> idles;

    int print(const char* what) {
        std::sort(milliseconds.begin(), milliseconds.end());
        std::sort(idles.begin(), idles.end());
        std::printf("%-34s %6.1f ms  %6.1f ms at most, %d idle calls, %d at most\n", what,
                    milliseconds[milliseconds.size() / 2], milliseconds.back(),
                    idles[idles.size() / 2], idles.back());
        return idles.back();
    }
};

void send_pointer(Screen& screen, Window window, int type, unsigned button) {
    XEvent event{};
    event.type = type;
    event.xbutton.window = window;
    event.xbutton.root = DefaultRootWindow(screen.get_display());
    event.xbutton.x = KNOB_X;
    event.xbutton.y = KNOB_Y;
    event.xbutton.button = button;
    event.xbutton.same_screen = True;
    XSendEvent(screen.get_display(), window, False, NoEventMask, &event);
    XSync(screen.get_display(), False);
}

// From the call that opens the window to the return of the one after which it looks as it stays.
void measure_opening(Screen& screen, EditedPlugin& plugin, Waits& opened, Waits& shown) {
    const HostClock open_clock;
    plugin.open();
    HostClock clock = open_clock;
    opened.milliseconds.push_back(1000 * clock.seconds());
    opened.idles.push_back(0);
    const Window window = screen.children(plugin.parent).front();
    std::vector<std::string> seen{clock.look(screen, window)};
    std::vector<double> times{1000 * clock.seconds()};
    for (int i = 0; i < IDLES_UNTIL_STILL; i++) {
        pause_host();
        plugin.host.call(effEditIdle);
        times.push_back(1000 * clock.seconds());
        if (i < 8 || i == IDLES_UNTIL_STILL - 1)
            seen.push_back(clock.look(screen, window));
    }
    const auto first = std::find(seen.begin(), seen.end(), seen.back()) - seen.begin();
    shown.milliseconds.push_back(times[size_t(first)]);
    shown.idles.push_back(int(first));
}

// From the notch to the return of the idle call after which other pixels are seen.
void measure_notch(Screen& screen, EditedPlugin& plugin, bool is_up, Waits& waits) {
    const Window window = screen.children(plugin.parent).front();
    HostClock clock;
    const std::string before = clock.look(screen, window);
    const double start = clock.seconds();
    for (const int type : {ButtonPress, ButtonRelease})
        send_pointer(screen, window, type, is_up ? Button4 : Button5);
    int idles = 0;
    double seen = 0.0;
    do {
        pause_host();
        plugin.host.call(effEditIdle);
        idles++;
        seen = clock.seconds();
    } while (clock.look(screen, window) == before && idles < IDLES_UNTIL_STILL);
    waits.milliseconds.push_back(1000 * (seen - start));
    waits.idles.push_back(idles);
}

int run(int count) {
    Screen screen;
    EditedPlugin plugin(screen, 0, answer);
    Waits opened;
    Waits shown;
    Waits closed;
    Waits turned;
    for (int i = 0; i < count; i++) {
        if (i > 0) {
            const HostClock clock;
            plugin.close();
            closed.milliseconds.push_back(1000 * clock.seconds());
            closed.idles.push_back(0);
        }
        measure_opening(screen, plugin, opened, shown);
    }
    send_pointer(screen, screen.children(plugin.parent).front(), MotionNotify, 0);
    plugin.idle(IDLES_UNTIL_STILL);
    for (int i = 0; i < count; i++)
        measure_notch(screen, plugin, i % 2 == 0, turned);
    plugin.close();
    opened.print("the editor opens");
    closed.print("the editor closes");
    const int to_picture = shown.print("its whole picture is on the screen");
    const int to_turn = turned.print("a notch of the wheel is");
    return to_picture <= MOST_IDLES && to_turn <= MOST_IDLES
               ? 0
               : fail("a picture took more than two idle calls");
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    if (argc != 2 || std::strtol(argv[1], nullptr, 10) < 2)
        return tarquil::fail("usage: response_host N, two or more");
    return tarquil::run(int(std::strtol(argv[1], nullptr, 10)));
}
