// Directory images: what is found in one is there when it is unpacked, and none leaves anything
// outside its target.

#include <sys/stat.h>

#include <cstdint>
#include <cstring>
#include <string_view>

#include "common/assertion.h"
#include "common/directory_image.h"
#include "common/platform/file_system.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr int HEADER_LENGTH = 264;
constexpr int SIZE_OFFSET = 260;

// Whether a file is longer than the rest of the image, which may only be met by an assertion.
bool has_file_too_long(const uint8_t* image, int length) {
    for (int position = 4; position < length;) {
        const int rest = length - position - HEADER_LENGTH;
        const bool is_file =
            length - position >= 4 && std::memcmp(image + position, "MFIL", 4) == 0;
        uint32_t size = 0;
        for (int i = SIZE_OFFSET; i < HEADER_LENGTH; i++)
            size = size << 8 | (position + i < length ? image[position + i] : 0U);
        if (is_file && rest < int(size))
            return true;
        if (is_file && int(size) < 0)
            return false; // the unpacking ends here
        position += HEADER_LENGTH + (is_file ? int(size) : 0);
    }
    return false;
}

bool holds_only(const std::string& path, std::string_view expected) {
    DIR* handle = nullptr;
    dirent* entry = nullptr;
    bool good = true;
    for (const char* name = find_first_file(path, handle, entry); name != nullptr;
         name = find_next_file(handle, entry)) {
        const std::string_view view(name);
        good = good && (view == "." || view == ".." || view == expected);
    }
    find_close(handle);
    return good;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto* image = reinterpret_cast<const char*>(data);
    const int length = int(size);
    const auto found = find_in_directory_image({image, size}, "default.tqb");
    TARQ_ASSERT(!found || found->data() + found->size() <= image + size);
    if (has_file_too_long(data, length))
        return 0;
    const char* name = mktempdir();
    TARQ_ASSERT(name != nullptr);
    const std::string outer = name;
    TARQ_ASSERT(mkdir((outer + "/inner").c_str(), 0700) == 0);
    memory_to_directory(outer + "/inner", image, length);
    TARQ_ASSERT(!found || is_regular_file(outer + "/inner/default.tqb"));
    TARQ_ASSERT(holds_only(outer, "inner"));
    recursive_remove(outer);
    TARQ_ASSERT(!is_directory(outer));
    return 0;
}

} // namespace tarquil
