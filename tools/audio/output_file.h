// Where a sound file goes.
//
// A regular file appears under its name when it is complete, or not at all.  What cannot be
// written at random places (standard output, devices, pipes) gets the complete file in one stream,
// from a file without a name in the folder for temporary files.

#pragma once

#include <string>

#include "common/platform/atomic_file.h"

namespace tarquil {

struct OutputPlace {
    std::string path = {};    // "-" stands for standard output
    int standard_output = -1; // its descriptor; -1 when there is none
};

class OutputFile {
  public:
    // BadInput when the place cannot be written to.
    explicit OutputFile(const OutputPlace& place);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // A regular file, open for reading and writing.
    [[nodiscard]] int get_descriptor() const;
    [[nodiscard]] const std::string& get_path() const { return path; }

    // Makes the contents appear.  BadInput when that fails, for a full disk too.
    void commit();

    // Throws the failure that `errno` stands for.
    [[noreturn]] void fail() const;

  private:
    void stream_to(int destination) const;

    std::string path;
    int standard_output;
    AtomicFile file;
    int spool = -1; // -1: the target itself is written at random places
};

// A file without a name, open for reading and writing.  A Failure when there can be none.
int open_spool_file();

} // namespace tarquil
