// Messages of the storage layer kept from the user for a while.

#include "tools/silent_messages.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace tarquil {

SilentMessages::SilentMessages() : before(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)) {
    std::fflush(stdout);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
}

SilentMessages::~SilentMessages() {
    std::fflush(stdout);
    if (before < 0)
        return;
    dup2(before, STDOUT_FILENO);
    close(before);
}

} // namespace tarquil
