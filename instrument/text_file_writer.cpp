// Writing of the key/value text into a file.

#include "instrument/text_file_writer.h"

#include "common/assertion.h"

namespace tarquil {

namespace {

constexpr int WRITE_ERROR = 2;

} // namespace

bool TextFileWriter::open(const std::string& path) {
    TARQ_ASSERT(!outfile);
    auto file = std::make_unique<AtomicFile>();
    if (!file->open(path))
        return true;
    outfile = std::move(file);
    return false;
}

int TextFileWriter::close() {
    if (!outfile)
        return 0;
    const bool written = outfile->commit(get_string());
    outfile.reset();
    return written ? 0 : WRITE_ERROR;
}

} // namespace tarquil
