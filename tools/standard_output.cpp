// Standard output kept for results.

#include "tools/standard_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace tarquil {

int reserve_standard_output() {
    static const int reserved = [] {
        std::fflush(stdout);
        const int duplicate = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (duplicate >= 0)
            dup2(STDERR_FILENO, STDOUT_FILENO);
        return duplicate;
    }();
    return reserved;
}

} // namespace tarquil
