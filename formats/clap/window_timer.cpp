// Calls a window now and then from the host's main loop.

#include "formats/clap/window_timer.h"

#include <sys/timerfd.h>
#include <unistd.h>

namespace tarquil {

namespace {

constexpr uint32_t PERIOD_MS = 20;
constexpr long NANOSECONDS_PER_MS = 1000000;

} // namespace

bool WindowTimer::start() {
    if (timer != CLAP_INVALID_ID || clock >= 0)
        return true;
    const clap_host_timer_support* timers = host.timers();
    if (timers != nullptr && timers->register_timer(host.get(), PERIOD_MS, &timer))
        return true;
    timer = CLAP_INVALID_ID;
    return host.descriptors() != nullptr && start_clock();
}

bool WindowTimer::start_clock() {
    clock = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
    if (clock < 0)
        return false;
    const timespec period = {.tv_sec = 0, .tv_nsec = PERIOD_MS * NANOSECONDS_PER_MS};
    const itimerspec times = {.it_interval = period, .it_value = period};
    if (timerfd_settime(clock, 0, &times, nullptr) == 0 &&
        host.descriptors()->register_fd(host.get(), clock, CLAP_FD_CAN_READ))
        return true;
    close(clock);
    clock = -1;
    return false;
}

void WindowTimer::stop() {
    if (timer != CLAP_INVALID_ID)
        host.timers()->unregister_timer(host.get(), timer);
    timer = CLAP_INVALID_ID;
    if (clock < 0)
        return;
    host.descriptors()->unregister_fd(host.get(), clock);
    close(clock);
    clock = -1;
}

void WindowTimer::drain() const {
    uint64_t count = 0;
    // Nothing to read is as good.
    [[maybe_unused]] const ssize_t size = clock < 0 ? 0 : read(clock, &count, sizeof(count));
}

} // namespace tarquil
