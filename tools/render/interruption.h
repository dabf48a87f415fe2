// The user's wish to stop, which may not leave temporary files behind.

#pragma once

#include <csignal>
#include <iterator>

namespace tarquil {

class Interruption {
  public:
    // Until its end, SIGINT, SIGTERM and SIGHUP only raise a flag, and writing to a closed pipe or
    // beyond a file size limit is an error like any other.
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // A Failure once one of the signals has come.
    static void check();

  private:
    static constexpr int SIGNALS[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ};
    struct sigaction previous[std::size(SIGNALS)] = {};
};

} // namespace tarquil
