// The user's wish to stop.

#include "tools/render/interruption.h"

#include "common/failure.h"

namespace tarquil {

namespace {

volatile std::sig_atomic_t was_interrupted = 0;

void remember(int /*signal*/) {
    was_interrupted = 1;
}

} // namespace

Interruption::Interruption() {
    was_interrupted = 0;
    for (size_t i = 0; i < std::size(SIGNALS); i++) {
        struct sigaction action {};
        const bool is_error = SIGNALS[i] == SIGPIPE || SIGNALS[i] == SIGXFSZ;
        action.sa_handler = is_error ? SIG_IGN : remember;
        sigaction(SIGNALS[i], &action, &previous[i]);
    }
}

Interruption::~Interruption() {
    for (size_t i = 0; i < std::size(SIGNALS); i++)
        sigaction(SIGNALS[i], &previous[i], nullptr);
}

void Interruption::check() {
    if (was_interrupted != 0)
        throw Failure(STATUS_CANNOT, "interrupted");
}

} // namespace tarquil
