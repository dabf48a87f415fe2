// Files dropped from the desktop onto a window.

#include "editor/window/file_drop.h"

#include <algorithm>
#include <cstring>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include "editor/model/uri_list.h"

namespace tarquil {

namespace {

constexpr unsigned long VERSION = 5;
constexpr const char* FILES = "text/uri-list";
constexpr long LONGEST_PROPERTY = 1L << 18; // in units of four bytes

} // namespace

FileDrop::FileDrop(uintptr_t dropped_on) : window(dropped_on) {
    if (!connection.is_open())
        return;
    Display* const display = connection.display;
    XSetWindowAttributes nothing{};
    proxy = XCreateWindow(display, DefaultRootWindow(display), -1, -1, 1, 1, 0, 0, InputOnly,
                          nullptr, 0, &nothing);
    for (const uintptr_t each : {proxy, window}) {
        set_property(each, "XdndProxy", XA_WINDOW, proxy);
        set_property(each, "XdndAware", XA_ATOM, VERSION);
    }
    XFlush(display);
}

FileDrop::~FileDrop() {
    if (connection.is_open())
        XDestroyWindow(connection.display, proxy);
}

FileDrop::Atom FileDrop::atom(const char* name) const {
    return XInternAtom(connection.display, name, False);
}

void FileDrop::set_property(uintptr_t of_window, const char* name, Atom type,
                            unsigned long value) const {
    XChangeProperty(connection.display, Window(of_window), atom(name), type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&value), 1);
}

// As bytes; items of 32 bits come as longs.
std::string FileDrop::read_property(uintptr_t of_window, Atom property, Atom type) const {
    Atom real_type = None;
    int bits = 0;
    unsigned long count = 0;
    unsigned long left_over = 0;
    unsigned char* bytes = nullptr;
    if (XGetWindowProperty(connection.display, Window(of_window), property, 0, LONGEST_PROPERTY,
                           False, type, &real_type, &bits, &count, &left_over, &bytes) != Success ||
        bytes == nullptr)
        return "";
    const size_t item = bits == 32 ? sizeof(long) : size_t(bits) / 8;
    std::string value(reinterpret_cast<const char*>(bytes), real_type == type ? count * item : 0);
    XFree(bytes);
    return value;
}

void FileDrop::reply(const char* kind, bool is_taken) const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = Window(source);
    event.xclient.message_type = atom(kind);
    event.xclient.format = 32;
    const long action = is_taken ? long(atom("XdndActionCopy")) : long(None);
    event.xclient.data.l[0] = long(window);
    event.xclient.data.l[1] = is_taken ? 1 : 0;
    const bool is_status = std::strcmp(kind, "XdndStatus") == 0;
    event.xclient.data.l[is_status ? 4 : 2] = action;
    XSendEvent(connection.display, Window(source), False, NoEventMask, &event);
    XFlush(connection.display);
}

void FileDrop::enter(const long* data) {
    source = uintptr_t(data[0]);
    is_welcome = false;
    std::vector<Atom> types(data + 2, data + 5);
    if ((data[1] & 1) != 0) { // more than three
        const std::string list = read_property(source, atom("XdndTypeList"), XA_ATOM);
        types.resize(list.size() / sizeof(long));
        std::memcpy(types.data(), list.data(), types.size() * sizeof(long));
    }
    has_files = std::find(types.begin(), types.end(), atom(FILES)) != types.end();
}

void FileDrop::move(const long* data) {
    constexpr unsigned LOW = 0xFFFF;
    const auto place = static_cast<unsigned long>(data[2]);
    Window child = None;
    XTranslateCoordinates(connection.display, DefaultRootWindow(connection.display), Window(window),
                          int(place >> 16U & LOW), int(place & LOW), &at_x, &at_y, &child);
    is_welcome = has_files && moved && moved(at_x, at_y);
    reply("XdndStatus", is_welcome);
}

void FileDrop::take_message(Atom kind, const long* data) {
    if (kind == atom("XdndEnter")) {
        enter(data);
        return;
    }
    if (source == 0 || uintptr_t(data[0]) != source)
        return;
    if (kind == atom("XdndPosition")) {
        move(data);
    } else if (kind == atom("XdndLeave")) {
        source = 0;
        if (left)
            left();
    } else if (kind == atom("XdndDrop") && is_welcome) {
        XConvertSelection(connection.display, atom("XdndSelection"), atom(FILES), atom(FILES),
                          Window(proxy), Time(data[2]));
    } else if (kind == atom("XdndDrop")) {
        reply("XdndFinished", false);
        source = 0;
    }
}

void FileDrop::take_files(Atom property) {
    const std::vector<std::string> paths =
        property == None ? std::vector<std::string>()
                         : files_of_uri_list(read_property(proxy, property, atom(FILES)));
    XDeleteProperty(connection.display, Window(proxy), atom(FILES));
    reply("XdndFinished", !paths.empty());
    source = 0;
    if (!paths.empty() && dropped)
        dropped(paths, at_x, at_y);
    else if (left)
        left();
}

void FileDrop::look() {
    while (connection.is_open() && XPending(connection.display) > 0) {
        XEvent event;
        XNextEvent(connection.display, &event);
        if (event.type == ClientMessage)
            take_message(event.xclient.message_type, event.xclient.data.l);
        else if (event.type == SelectionNotify && source != 0)
            take_files(event.xselection.property);
    }
}

} // namespace tarquil
