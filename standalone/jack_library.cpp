// The JACK client library, opened when it is wanted.

#include "standalone/jack_library.h"

#include <optional>

#include "common/platform/shared_library.h"

namespace tarquil {

namespace {

constexpr const char* FILE_NAME = "libjack.so.0";

std::optional<JackLibrary> load() {
    SharedLibrary library(FILE_NAME);
    JackLibrary jack;
#define TARQUIL_FIND(name) library.find(jack.name, "jack_" #name);
    TARQUIL_JACK_FUNCTIONS(TARQUIL_FIND)
#undef TARQUIL_FIND
    if (!library.has_all())
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
