// The directory image.

#include "common/directory_image.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <set>

#include "common/assertion.h"
#include "common/file_handle.h"
#include "common/platform/file_system.h"

namespace tarquil {

namespace {

constexpr int NOT_AN_IMAGE = 4;
constexpr int UNKNOWN_KIND = 234;
constexpr int CANNOT_CREATE = 1234;
constexpr int NOTHING_WRITTEN = 2734;
constexpr int SHORT_WRITE = 43;
constexpr int CUT_OFF = 1;

constexpr std::string_view IMAGE_MAGIC = "MVFS";
constexpr std::string_view DIRECTORY_KIND = "MDIR";
constexpr std::string_view FILE_KIND = "MFIL";

constexpr int KIND_LENGTH = 4;
constexpr int NAME_LENGTH = 256;
constexpr int SIZE_LENGTH = 4;
constexpr int RECORD_HEADER_LENGTH = KIND_LENGTH + NAME_LENGTH + SIZE_LENGTH;

// One record's header, with zeros for what lies beyond the image's end.
class RecordHeader {
  public:
    RecordHeader(const char* image, int arrsize) {
        std::memcpy(bytes, image, size_t(std::min(arrsize, RECORD_HEADER_LENGTH)));
    }

    [[nodiscard]] std::string_view kind() const { return {bytes, KIND_LENGTH}; }

    // The path; all of its field when that has no NUL.
    [[nodiscard]] std::string_view name() const {
        const std::string_view field(bytes + KIND_LENGTH, NAME_LENGTH);
        return field.substr(0, field.find('\0'));
    }

    [[nodiscard]] uint32_t size() const {
        uint32_t value = 0;
        for (int i = KIND_LENGTH + NAME_LENGTH; i < RECORD_HEADER_LENGTH; i++)
            value = value << 8 | uint8_t(bytes[i]);
        return value;
    }

  private:
    char bytes[RECORD_HEADER_LENGTH] = {};
};

bool stays_below_target(std::string_view name) {
    if (name.size() == NAME_LENGTH || name.starts_with('/'))
        return false;
    for (;;) {
        const size_t slash = name.find('/');
        if (name.substr(0, slash) == "..")
            return false;
        if (slash == std::string_view::npos)
            return true;
        name.remove_prefix(slash + 1);
    }
}

// The path without its empty and "." parts.
std::string plain_path(std::string_view name) {
    std::string path;
    while (!name.empty()) {
        const size_t end = std::min(name.find('/'), name.size());
        const std::string_view part = name.substr(0, end);
        if (!part.empty() && part != ".")
            path += (path.empty() ? "" : "/") + std::string(part);
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return path;
}

// What an image's records have made so far, and whether the next one can be.
class UnpackedTree {
  public:
    void make_directory(std::string_view name) {
        const std::string path = plain_path(name);
        if (!is_dot(name) && has_parent(path) && !files.contains(path))
            directories.insert(path);
    }

    bool make_file(std::string_view name) {
        const std::string path = plain_path(name);
        if (is_dot(name) || name.ends_with('/') || !has_parent(path) || directories.contains(path))
            return false;
        files.insert(path);
        return true;
    }

  private:
    static bool is_dot(std::string_view name) { return name == "." || name.ends_with("/."); }

    [[nodiscard]] bool has_parent(const std::string& path) const {
        const size_t slash = path.rfind('/');
        return slash == std::string::npos || directories.contains(path.substr(0, slash));
    }

    std::set<std::string> directories{""};
    std::set<std::string> files;
};

bool starts_with_magic(const char* image, int length) {
    return length >= int(IMAGE_MAGIC.size()) &&
           std::string_view(image, IMAGE_MAGIC.size()) == IMAGE_MAGIC;
}

// Writes a record's file from the `arrsize` bytes of the image that follow its header; negative
// when the header itself was cut off.
int unpack_file(const std::string& path, const char* data, int arrsize, uint32_t filesize) {
    const FileHandle file(std::fopen(path.c_str(), "wb"));
    if (!file)
        return CANNOT_CREATE;
    TARQ_ASSERT(arrsize >= int(filesize));
    // Without a buffer the count that comes back is what has reached the file.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    // A size of 2^31 and more is beyond any image: what there is of it is written.
    const size_t available = size_t(std::max(arrsize, 0));
    const size_t written = std::fwrite(data, 1, std::min<size_t>(filesize, available), file.get());
    if (written == 0)
        return NOTHING_WRITTEN;
    return written < filesize ? SHORT_WRITE : 0;
}

} // namespace

std::optional<std::string_view> find_in_directory_image(std::string_view image,
                                                        std::string_view wanted) {
    if (!image.starts_with(IMAGE_MAGIC))
        return std::nullopt;
    image.remove_prefix(IMAGE_MAGIC.size());
    std::optional<std::string_view> found;
    UnpackedTree tree;
    while (image.size() >= RECORD_HEADER_LENGTH) {
        const RecordHeader header(image.data(), RECORD_HEADER_LENGTH);
        image.remove_prefix(RECORD_HEADER_LENGTH);
        if (!stays_below_target(header.name()))
            break;
        if (header.kind() == DIRECTORY_KIND) {
            tree.make_directory(header.name());
            continue;
        }
        if (header.kind() != FILE_KIND || header.size() > image.size() ||
            !tree.make_file(header.name()))
            break;
        const std::string_view data = image.substr(0, header.size());
        if (plain_path(header.name()) == wanted)
            found = data;
        if (data.empty())
            break;
        image.remove_prefix(data.size());
    }
    return found;
}

int memory_to_directory(const std::string& target, const char* image, int length) {
    if (!starts_with_magic(image, length))
        return NOT_AN_IMAGE;
    image += IMAGE_MAGIC.size();
    int arrsize = length - int(IMAGE_MAGIC.size());
    while (arrsize >= 1) {
        const RecordHeader header(image, arrsize);
        const bool may_create = stays_below_target(header.name());
        const std::string path = concat_paths(target, std::string(header.name()));
        image += std::min(arrsize, RECORD_HEADER_LENGTH);
        arrsize -= RECORD_HEADER_LENGTH;
        if (header.kind() == DIRECTORY_KIND) {
            if (may_create)
                mkdir(path.c_str(), 0700); // one that exists already is fine
        } else if (header.kind() == FILE_KIND) {
            const int error =
                may_create ? unpack_file(path, image, arrsize, header.size()) : CANNOT_CREATE;
            if (error != 0)
                return error;
            image += header.size();
            arrsize -= int(header.size());
        } else {
            return UNKNOWN_KIND;
        }
    }
    return arrsize == 0 ? 0 : CUT_OFF;
}

} // namespace tarquil
