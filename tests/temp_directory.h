// Directories that a test may fill, removed with all that is in them at the test's end.

#pragma once

#include <filesystem>
#include <string>

#include "common/platform/file_system.h"

namespace tarquil {

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

// Makes a fresh directory the current one.
class InTempDirectory {
  public:
    InTempDirectory() : before(std::filesystem::current_path()) {
        std::filesystem::current_path(directory.path());
    }
    InTempDirectory(const InTempDirectory&) = delete;
    InTempDirectory& operator=(const InTempDirectory&) = delete;
    ~InTempDirectory() { std::filesystem::current_path(before); }

  private:
    TempDirectory directory;
    std::filesystem::path before;
};

} // namespace tarquil
