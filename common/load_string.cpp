// Whole files and hexadecimal text to and from strings.

#include "common/load_string.h"

#include <cstdint>
#include <cstdio>

#include "common/file_handle.h"
#include "common/platform/atomic_file.h"
#include "common/platform/file_system.h"
#include "common/white_space.h"

namespace tarquil {

namespace {

constexpr int CANNOT_OPEN = 1;
constexpr int READ_OR_WRITE_ERROR = 2;
constexpr int ODD_HEX_LENGTH = 2;
constexpr int BAD_HEX_DIGIT = 3;

constexpr size_t CHUNK_LENGTH = 4096;

// Far above any bank (about 1 MiB), far below what a machine's memory holds.
constexpr size_t MAX_FILE_LENGTH = size_t(64) << 20;

constexpr int NOT_A_DIGIT = -1;

int hex_digit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = char(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : NOT_A_DIGIT;
}

// The byte that the pair stands for, or NOT_A_DIGIT.
int hex_pair(char first, char second) {
    const int high = hex_digit(first);
    const int low = hex_digit(second);
    if (high != NOT_A_DIGIT)
        return low == NOT_A_DIGIT ? high : high * 16 + low;
    if (low == NOT_A_DIGIT)
        return NOT_A_DIGIT;
    if (first == '-')
        return uint8_t(-low);
    return first == '+' || is_white_space(first) ? low : NOT_A_DIGIT;
}

} // namespace

int load_file_to_string(const std::string& path, std::string& out) {
    out.clear();
    const FileHandle file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return CANNOT_OPEN;
    char chunk[CHUNK_LENGTH];
    size_t count = 0;
    do {
        count = std::fread(chunk, 1, sizeof(chunk), file.get());
        out.append(chunk, count);
    } while (count > 0 && out.size() <= MAX_FILE_LENGTH);
    return std::ferror(file.get()) != 0 || out.size() > MAX_FILE_LENGTH ? READ_OR_WRITE_ERROR : 0;
}

int load_regular_file_to_string(const std::string& path, std::string& out) {
    return is_regular_file(path) ? load_file_to_string(path, out) : CANNOT_OPEN;
}

int save_file_to_string(const std::string& path, std::string_view text) {
    AtomicFile file;
    if (!file.open(path))
        return CANNOT_OPEN;
    return file.commit(text) ? 0 : READ_OR_WRITE_ERROR;
}

std::string str2hex(std::string_view text) {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string hex(text.size() * 2, '\0');
    for (size_t i = 0; i < text.size(); i++) {
        const auto byte = uint8_t(text[i]);
        hex[i * 2] = DIGITS[byte >> 4];
        hex[i * 2 + 1] = DIGITS[byte & 15];
    }
    return hex;
}

int hex2str(std::string_view hex, std::string& out) {
    if (hex.size() % 2 != 0)
        return ODD_HEX_LENGTH;
    out.resize(hex.size() / 2);
    for (size_t i = 0; i < out.size(); i++) {
        const int byte = hex_pair(hex[i * 2], hex[i * 2 + 1]);
        if (byte == NOT_A_DIGIT)
            return BAD_HEX_DIGIT;
        out[i] = char(byte);
    }
    return 0;
}

} // namespace tarquil
