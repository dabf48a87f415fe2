// The JACK client library, opened when it is wanted.

#include "standalone/jack_library.h"

#include <dlfcn.h>

#include <optional>
#include <type_traits>

namespace tarquil {

namespace {

constexpr const char* FILE_NAME = "libjack.so.0";

std::optional<JackLibrary> load() {
    void* file = dlopen(FILE_NAME, RTLD_NOW | RTLD_LOCAL);
    if (file == nullptr)
        return std::nullopt;
    JackLibrary jack;
    bool has_all = true;
    const auto find = [&](auto& function, const char* name) {
        function = reinterpret_cast<std::decay_t<decltype(function)>>(dlsym(file, name));
        has_all = has_all && function != nullptr;
    };
#define TARQUIL_FIND(name) find(jack.name, "jack_" #name);
    TARQUIL_JACK_FUNCTIONS(TARQUIL_FIND)
#undef TARQUIL_FIND
    if (!has_all)
        return std::nullopt;
    // Its own messages say less than the reasons that are given.
    jack.set_error_function([](const char*) {});
    jack.set_info_function([](const char*) {});
    return jack;
}

} // namespace

const JackLibrary* JackLibrary::get(std::string& reason) {
    static const std::optional<JackLibrary> LIBRARY = load();
    if (!LIBRARY) {
        reason = std::string("JACK's library (") + FILE_NAME + ") is not installed";
        return nullptr;
    }
    return &*LIBRARY;
}

} // namespace tarquil
