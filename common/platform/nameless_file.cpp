// A file without a name.

#include "common/platform/nameless_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace tarquil {

int open_nameless_file(std::string& name) {
    const char* folder = std::getenv("TMPDIR");
    name = folder != nullptr && *folder != '\0' ? folder : "/tmp";
    name += "/tarquil-XXXXXX";
    const int descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0)
        unlink(name.c_str());
    return descriptor;
}

} // namespace tarquil
