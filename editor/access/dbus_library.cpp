// The D-Bus library, opened when it is wanted.

#include "editor/access/dbus_library.h"

#include <optional>

#include "common/platform/shared_library.h"

namespace tarquil {

namespace {

std::optional<DBusLibrary> load() {
    SharedLibrary library("libdbus-1.so.3");
    DBusLibrary dbus;
#define TARQUIL_FIND(name) library.find(dbus.name, "dbus_" #name);
    TARQUIL_DBUS_FUNCTIONS(TARQUIL_FIND)
#undef TARQUIL_FIND
    return library.has_all() ? std::optional(dbus) : std::nullopt;
}

} // namespace

const DBusLibrary* DBusLibrary::get() {
    static const std::optional<DBusLibrary> LIBRARY = load();
    return LIBRARY ? &*LIBRARY : nullptr;
}

} // namespace tarquil
