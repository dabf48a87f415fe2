// A file that one process at a time holds, until it lets go or ends in whatever way.

#pragma once

#include <string>

namespace tarquil {

class FileLock {
  public:
    FileLock() = default;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock() { release(); }

    // Makes the file when it is missing.  False when another process holds it, or it cannot be
    // made.
    bool take(const std::string& path);
    void release();
    [[nodiscard]] bool is_taken() const { return descriptor >= 0; }

  private:
    int descriptor = -1;
};

} // namespace tarquil
