// A disk that is full, for the length of a scope.

#pragma once

#include <sys/resource.h>

#include <csignal>

namespace tarquil {

// Any write beyond `bytes` fails.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        old_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_limit);
        const rlimit limit{bytes, old_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_limit);
        std::signal(SIGXFSZ, old_handler);
    }

  private:
    rlimit old_limit{};
    void (*old_handler)(int) = nullptr;
};

} // namespace tarquil
