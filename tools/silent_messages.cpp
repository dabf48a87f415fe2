// Messages of the storage layer kept from the user for a while.

#include "tools/silent_messages.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "tools/standard_output.h"

SilentMessages::SilentMessages() : before(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0)) {
    discard_messages();
}

SilentMessages::~SilentMessages() {
    std::fflush(stdout);
    if (before < 0)
        return;
    dup2(before, STDOUT_FILENO);
    close(before);
}
