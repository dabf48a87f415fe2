// How long a host that somebody else uses plays: a slow machine's user needs longer.

#pragma once

#include <poll.h>
#include <unistd.h>

namespace tarquil {

// False once the standard input has ended: who drives the host has done what it wanted to.
inline bool is_user_at_work() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    char unused = 0;
    return poll(&input, 1, 0) == 0 || read(STDIN_FILENO, &unused, 1) > 0;
}

} // namespace tarquil
