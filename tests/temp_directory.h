// A directory that a test may fill, removed with all that is in it at the test's end.

#pragma once

#include <string>

#include "common/file_system.h"

class TempDirectory {
  public:
    TempDirectory() : name(mktempdir()) {}
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;
    ~TempDirectory() { recursive_remove(name); }

    [[nodiscard]] const std::string& path() const { return name; }
    [[nodiscard]] std::string path(const std::string& file) const {
        return concat_paths(name, file);
    }

  private:
    std::string name;
};
