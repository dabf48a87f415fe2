// Calls a window now and then from the host's main loop: by the host's timers, or by a clock of the
// system's that the host watches.

#pragma once

#include "formats/clap/clap_host.h"

namespace tarquil {

// All on the main thread; the plug-in's window idles at each call that the host makes.
class WindowTimer {
  public:
    // The host stays as long as the object.
    explicit WindowTimer(const ClapHost& calling) : host(calling) {}
    WindowTimer(const WindowTimer&) = delete;
    WindowTimer& operator=(const WindowTimer&) = delete;
    ~WindowTimer() { stop(); }

    // False when the host has no way.
    bool start();
    void stop();

    // That the descriptor is ready.
    void drain() const;

  private:
    bool start_clock();

    const ClapHost& host;
    clap_id timer = CLAP_INVALID_ID;
    int clock = -1; // file descriptor
};

} // namespace tarquil
