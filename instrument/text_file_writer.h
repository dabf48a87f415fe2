// Writing of the key/value text into a file, which gets it as a whole when it is closed.

#pragma once

#include <memory>
#include <string>

#include "common/platform/atomic_file.h"
#include "instrument/text_file_memory_writer.h"

namespace tarquil {

class TextFileWriter : public TextFileMemoryWriter {
  public:
    TextFileWriter() = default;
    TextFileWriter(const TextFileWriter&) = delete;
    TextFileWriter& operator=(const TextFileWriter&) = delete;
    ~TextFileWriter() { close(); }

    // True when the file can NOT be opened for writing.  No file may be open yet.
    bool open(const std::string& path);

    // Writes the text if a file is open.  0; 2 when it could not be written, and the file is as it
    // was before.
    int close();

  private:
    std::unique_ptr<AtomicFile> outfile; // null while no file is open
};

} // namespace tarquil
