// Standard output kept for results.

#include "tools/standard_output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

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

SilencedMessages::SilencedMessages() : previous(-1) {
    std::fflush(stdout);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0)
        return;
    previous = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (previous >= 0)
        dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
}

SilencedMessages::~SilencedMessages() {
    if (previous < 0)
        return;
    std::fflush(stdout);
    dup2(previous, STDOUT_FILENO);
    close(previous);
}
