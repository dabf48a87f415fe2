// Printing of what a command found out.

#include "tools/write_result.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "common/failure.h"

namespace tarquil {

void write_result(int results, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(results, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(size_t(written));
        else if (errno != EINTR)
            throw Failure(STATUS_CANNOT,
                          std::string("standard output: cannot be written: ") + strerror(errno));
    }
}

} // namespace tarquil
