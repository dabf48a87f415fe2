// A C stream that closes itself.

#pragma once

#include <cstdio>
#include <memory>

namespace tarquil {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

} // namespace tarquil
