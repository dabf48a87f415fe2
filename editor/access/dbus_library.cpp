// The D-Bus library, opened when it is wanted.

#include "editor/access/dbus_library.h"

#include <dlfcn.h>

#include <optional>
#include <type_traits>

namespace tarquil {

namespace {

std::optional<DBusLibrary> load() {
    void* file = dlopen("libdbus-1.so.3", RTLD_NOW | RTLD_LOCAL);
    if (file == nullptr)
        return std::nullopt;
    DBusLibrary dbus;
    bool has_all = true;
    const auto find = [&](auto& function, const char* name) {
        function = reinterpret_cast<std::decay_t<decltype(function)>>(dlsym(file, name));
        has_all = has_all && function != nullptr;
    };
#define TARQUIL_FIND(name) find(dbus.name, "dbus_" #name);
    TARQUIL_DBUS_FUNCTIONS(TARQUIL_FIND)
#undef TARQUIL_FIND
    return has_all ? std::optional(dbus) : std::nullopt;
}

} // namespace

const DBusLibrary* DBusLibrary::get() {
    static const std::optional<DBusLibrary> LIBRARY = load();
    return LIBRARY ? &*LIBRARY : nullptr;
}

} // namespace tarquil
