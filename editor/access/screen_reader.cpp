// What makes a window known to screen readers.

#include "editor/access/screen_reader.h"

#include <cstdlib>
#include <filesystem>

namespace tarquil {

namespace {

using Kind = AccessibleChange::Kind;

constexpr std::chrono::milliseconds LOOK_PERIOD{200};  // at the desktop's bus
constexpr std::chrono::milliseconds UPDATE_PERIOD{50}; // of what has changed
// Who walks through the tree asks again as soon as it is answered: the idle call stays for that.
constexpr int NEXT_CALL_MS = 2;
constexpr std::chrono::milliseconds LONGEST_STAY{12};
constexpr std::chrono::milliseconds LONGEST_KEY{150};

const BusReference STATUS{"org.a11y.Bus", "/org/a11y/bus"};
constexpr const char* PROPERTIES = "org.freedesktop.DBus.Properties";
const BusReference REGISTRY{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
const BusReference KEY_EVENTS{"org.a11y.atspi.Registry",
                              "/org/a11y/atspi/registry/deviceeventcontroller"};

// Empty for none; no bus is started.
std::string desktop_address() {
    if (const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS"))
        return address;
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    const std::string path = folder != nullptr ? std::string(folder) + "/bus" : "";
    std::error_code error;
    return std::filesystem::is_socket(path, error) ? "unix:path=" + path : "";
}

} // namespace

ScreenReader::ScreenReader(Window shown) : window(std::move(shown)) {
    const std::string address = desktop_address();
    if (address.empty())
        return;
    dbus = DBusLibrary::get();
    if (dbus == nullptr)
        return;
    desktop_bus = std::make_unique<Bus>(*dbus, address);
    watch_desktop();
}

ScreenReader::~ScreenReader() = default;

void ScreenReader::watch_desktop() {
    desktop_bus->watch_signals("type='signal',sender='org.a11y.Bus',path='/org/a11y/bus'");
    desktop_bus->watch_signals("type='signal',sender='org.freedesktop.DBus',"
                               "member='NameOwnerChanged',arg0='org.a11y.Bus'");
    desktop_bus->on_signal = [this](const BusMessage& signal) {
        const std::string member = signal.member();
        if (member == "PropertiesChanged" || member == "NameOwnerChanged")
            ask_status();
    };
    ask_status();
}

// Some desktops set one property, some the other.
void ScreenReader::ask_status() {
    desktop_bus->call(
        STATUS, PROPERTIES, "GetAll", [](BusWriter& writer) { writer.text("org.a11y.Status"); },
        [this](const BusMessage& answer) {
            is_wanted = false;
            std::optional<BusReader> all = BusReader(*dbus, answer).inside();
            for (auto one = all ? all->inside() : std::nullopt; one; one = all->inside()) {
                const std::string name = one->text().value_or("");
                std::optional<BusReader> value = one->inside();
                if (name == "IsEnabled" || name == "ScreenReaderEnabled")
                    is_wanted = is_wanted || (value && value->boolean().value_or(false));
            }
            follow_status();
        });
}

void ScreenReader::follow_status() {
    if (!is_wanted)
        disconnect();
    if (!is_wanted || is_asked)
        return;
    is_asked = true;
    desktop_bus->call(STATUS, STATUS.owner.c_str(), "GetAddress", nullptr,
                      [this](const BusMessage& answer) {
                          const auto address = BusReader(*dbus, answer).text();
                          if (!answer.is_error() && address && is_wanted)
                              connect(*address);
                      });
}

void ScreenReader::connect(const std::string& address) {
    bus = std::make_unique<Bus>(*dbus, address);
    bus->on_call = [this](const BusMessage& call, BusWriter& writer) {
        return answer(call, writer);
    };
    world = std::make_unique<AccessibleObject::World>(AccessibleObject::World{
        *dbus, tree, "", {"", "/org/a11y/atspi/null"}, {}, [this](const auto& action) {
            window.act(action);
            update();
        }});
}

// Once the bus has given it a name.
void ScreenReader::introduce() {
    world->owner = bus->name();
    update();
    is_known = true;
    bus->call(
        REGISTRY, "org.a11y.atspi.Socket", "Embed",
        [this](BusWriter& writer) {
            writer.reference({world->owner, AccessibleObject::path_of(AccessibleTree::NOBODY)});
        },
        [this](const BusMessage& answer) {
            std::optional<BusReader> desktop = BusReader(*dbus, answer).inside();
            if (answer.is_error() || !desktop)
                return;
            world->desktop.owner = desktop->text().value_or("");
            world->desktop.path = desktop->text().value_or(world->desktop.path);
        },
        true);
}

void ScreenReader::disconnect() {
    is_known = is_asked = false;
    bus.reset();
    world.reset();
    tree = AccessibleTree();
}

void ScreenReader::idle() {
    if (desktop_bus == nullptr)
        return;
    const Clock::time_point now = Clock::now();
    if (now >= next_look) {
        next_look = now + LOOK_PERIOD;
        desktop_bus->look(0);
    }
    if (bus == nullptr)
        return;
    is_fresh = false;
    if (!bus->is_open()) {
        disconnect();
        return;
    }
    serve();
    if (!is_known && !bus->name().empty())
        introduce();
    if (is_known && now >= next_update) {
        next_update = now + UPDATE_PERIOD;
        update();
        bus->look(0);
    }
}

void ScreenReader::serve() {
    const Clock::time_point end = Clock::now() + LONGEST_STAY;
    bool goes_on = bus->look(0);
    while (goes_on && Clock::now() < end)
        goes_on = bus->look(NEXT_CALL_MS);
}

void ScreenReader::update() {
    is_fresh = true;
    tell_place();
    for (const AccessibleChange& change : tree.update(window.describe()))
        tell(change);
}

void ScreenReader::tell_place() {
    const WindowPlace before = world->place;
    world->place = window.place();
    const bool is_active = world->place.is_active;
    if (is_active == before.is_active || tree.window() == AccessibleTree::NOBODY)
        return;
    const std::string title = tree.find(tree.window())->spoken->name;
    emit(tree.window(), "Window", is_active ? "Activate" : "Deactivate", "", 0, 0, "s",
         [&](BusWriter& value) { value.text(title); });
    tell({tree.window(), Kind::SHOWN, is_active ? 1U : 0U});
    if (is_active && tree.focused() != AccessibleTree::NOBODY)
        tell({tree.focused(), Kind::FOCUSED, 1});
}

void ScreenReader::emit(unsigned number, const char* kind, const char* member,
                        const std::string& detail, int first, int second, const char* type,
                        const BusWriter::Fill& value) {
    bus->signal(AccessibleObject::path_of(number), std::string("org.a11y.atspi.Event.") + kind,
                member, [&](BusWriter& writer) {
                    writer.text(detail).integer(first).integer(second).variant(type, value);
                    writer.array("{sv}", [](BusWriter&) {});
                });
}

void ScreenReader::tell(const AccessibleChange& change) {
    const AccessibleNode* const node = tree.find(change.number);
    if (node == nullptr)
        return;
    const Spoken& spoken = *node->spoken;
    const auto text = [&](BusWriter& value) { value.text(change.text); };
    const auto nothing = [](BusWriter& value) { value.integer(0); };
    const auto state = [&](const char* name) {
        emit(change.number, "Object", "StateChanged", name, int(change.at), 0, "i", nothing);
    };
    const auto child = [&](const char* what) {
        emit(change.number, "Object", "ChildrenChanged", what, int(change.at), 0, "(so)",
             [&](BusWriter& value) {
                 value.reference({world->owner, AccessibleObject::path_of(change.child)});
             });
    };
    const auto edit = [&](const char* what) {
        emit(change.number, "Object", "TextChanged", what, int(change.at), int(change.length), "s",
             text);
    };
    switch (change.kind) {
    case Kind::CHILD_REMOVED:
        return child("remove");
    case Kind::CHILD_ADDED:
        return child("add");
    case Kind::NAME:
        return emit(change.number, "Object", "PropertyChange", "accessible-name", 0, 0, "s", text);
    case Kind::HELP:
        return emit(change.number, "Object", "PropertyChange", "accessible-description", 0, 0, "s",
                    text);
    case Kind::VALUE:
        return emit(change.number, "Object", "PropertyChange", "accessible-value", 0, 0, "d",
                    [&](BusWriter& value) { value.real(spoken.range->now); });
    case Kind::ENABLED:
        state("enabled");
        if (!spoken.set && !spoken.type)
            state("sensitive");
        return;
    case Kind::ON:
        if (spoken.role == SpokenRole::SWITCH)
            state("pressed");
        return state(spoken.role == SpokenRole::ITEM || spoken.role == SpokenRole::TAB ? "selected"
                                                                                       : "checked");
    case Kind::TEXT_REMOVED:
        return edit("delete");
    case Kind::TEXT_INSERTED:
        return edit("insert");
    case Kind::CARET:
        return emit(change.number, "Object", "TextCaretMoved", "", int(change.at), 0, "i", nothing);
    case Kind::SHOWN:
        return state(spoken.role == SpokenRole::WINDOW ? "active" : "showing");
    case Kind::FOCUSED:
        return state("focused");
    }
}

bool ScreenReader::takes_key(const Keystroke& key) {
    // The answer may come when nobody waits for it any more.
    const auto taken = std::make_shared<std::optional<bool>>();
    bus->call(
        KEY_EVENTS, "org.a11y.atspi.DeviceEventController", "NotifyListenersSync",
        [&](BusWriter& writer) {
            writer.structure([&](BusWriter& event) {
                event.word(key.is_press ? 0 : 1).integer(int32_t(key.symbol));
                // Not as the registry's own description says, but as it takes them.
                event.integer(int32_t(key.code)).integer(int32_t(key.modifiers)).integer(0);
                event.text(key.name).boolean(false);
            });
        },
        [taken, library = dbus](const BusMessage& answer) {
            *taken = BusReader(*library, answer).boolean().value_or(false);
        });
    const Clock::time_point end = Clock::now() + LONGEST_KEY;
    while (!*taken && bus->is_open() && Clock::now() < end)
        bus->look(NEXT_CALL_MS);
    return taken->value_or(false);
}

bool ScreenReader::answer(const BusMessage& call, BusWriter& writer) {
    // What was closed since is not called any more.
    if (!is_fresh)
        update();
    if (call.path() == "/org/a11y/atspi/cache" && call.member() == "GetItems") {
        writer.array(AccessibleObject::CACHE_ITEM, [this](BusWriter& items) {
            AccessibleObject(*world, nullptr).write_cache_item(items);
            for (const auto& [number, node] : tree.all())
                AccessibleObject(*world, &node).write_cache_item(items);
        });
        return true;
    }
    const std::optional<unsigned> number = AccessibleObject::number_of(call.path());
    if (!number)
        return false;
    const AccessibleNode* const node = tree.find(*number);
    if (*number != AccessibleTree::NOBODY && node == nullptr)
        return false;
    return AccessibleObject(*world, node).answer(call, writer);
}

} // namespace tarquil
