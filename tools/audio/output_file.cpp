// Where a sound file goes.

#include "tools/audio/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "common/failure.h"
#include "common/platform/nameless_file.h"
#include "tools/notice.h"

namespace tarquil {

namespace {

constexpr size_t STREAM_BYTES = 65536;

bool is_standard_output(const std::string& path) {
    return path == "-" || path == "/dev/stdout";
}

} // namespace

int open_spool_file() {
    std::string name;
    const int descriptor = open_nameless_file(name);
    if (descriptor < 0)
        throw Failure(STATUS_CANNOT, name + ": no temporary file: " + strerror(errno));
    return descriptor;
}

OutputFile::OutputFile(const OutputPlace& place)
    : path(place.path), standard_output(place.standard_output) {
    errno = 0;
    if (is_standard_output(path)) {
        path = "standard output";
        if (standard_output < 0)
            fail();
        spool = open_spool_file();
        return;
    }
    if (!file.open(path))
        fail();
    if (file.is_direct())
        spool = open_spool_file();
    if (file.is_in_place())
        print_notice(in_place_warning(path));
}

OutputFile::~OutputFile() {
    if (spool >= 0)
        close(spool);
}

int OutputFile::get_descriptor() const {
    return spool >= 0 ? spool : file.get_descriptor();
}

void OutputFile::commit() {
    errno = 0;
    const bool has_target = file.get_descriptor() >= 0;
    if (spool >= 0)
        stream_to(has_target ? file.get_descriptor() : standard_output);
    if (has_target && !file.commit(""))
        fail();
}

void OutputFile::fail() const {
    std::string message = path + ": cannot be written";
    if (errno != 0)
        message += std::string(": ") + strerror(errno);
    throw BadInput(message);
}

void OutputFile::stream_to(int destination) const {
    std::vector<char> bytes(STREAM_BYTES);
    off_t position = 0;
    for (;;) {
        const ssize_t count = pread(spool, bytes.data(), bytes.size(), position);
        if (count < 0)
            fail();
        if (count == 0)
            return;
        position += count;
        for (ssize_t done = 0; done < count;) {
            const ssize_t written = write(destination, &bytes[size_t(done)], size_t(count - done));
            if (written < 0 && errno != EINTR)
                fail();
            done += written > 0 ? written : 0;
        }
    }
}

} // namespace tarquil
