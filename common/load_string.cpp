// Whole files and hexadecimal text to and from strings.

#include "common/load_string.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "common/characters.h"
#include "common/file_handle.h"
#include "common/platform/atomic_file.h"
#include "common/platform/file_system.h"

namespace tarquil {

namespace {

constexpr int CANNOT_LOAD = 1;
constexpr int READ_OR_WRITE_ERROR = 2;
constexpr int ODD_HEX_LENGTH = 2;
constexpr int BAD_HEX_DIGIT = 3;

constexpr size_t CHUNK_LENGTH = 4096;

// Far above any bank (about 1 MiB), far below what a machine's memory holds.
constexpr size_t MAX_FILE_LENGTH = size_t(64) << 20;

constexpr int8_t NOT_A_DIGIT = -1;

constexpr std::array<int8_t, 256> DIGIT_VALUES = [] {
    std::array<int8_t, 256> values{};
    values.fill(NOT_A_DIGIT);
    for (size_t digit = 0; digit < 16; digit++) {
        values[uint8_t("0123456789abcdef"[digit])] = int8_t(digit);
        values[uint8_t("0123456789ABCDEF"[digit])] = int8_t(digit);
    }
    return values;
}();

// The two digits of every byte.
constexpr std::array<std::array<char, 2>, 256> BYTE_DIGITS = [] {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::array<std::array<char, 2>, 256> digits{};
    for (size_t byte = 0; byte < 256; byte++)
        digits[byte] = {DIGITS[byte >> 4], DIGITS[byte & 15]};
    return digits;
}();

int hex_digit(char c) {
    return DIGIT_VALUES[uint8_t(c)];
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
        return CANNOT_LOAD;
    char chunk[CHUNK_LENGTH];
    size_t count = 0;
    do {
        count = std::fread(chunk, 1, sizeof(chunk), file.get());
        out.append(chunk, count);
    } while (count > 0 && out.size() <= MAX_FILE_LENGTH);
    return std::ferror(file.get()) != 0 || out.size() > MAX_FILE_LENGTH ? READ_OR_WRITE_ERROR : 0;
}

int load_regular_file_to_string(const std::string& path, std::string& out) {
    return is_regular_file(path) ? load_file_to_string(path, out) : CANNOT_LOAD;
}

std::string explain_file_error(int code) {
    return code == 1 ? "cannot be opened" : "cannot be read, or is larger than 64 MiB";
}

int save_file_to_string(const std::string& path, std::string_view text) {
    AtomicFile file;
    if (!file.open(path))
        return CANNOT_LOAD;
    return file.commit(text) ? 0 : READ_OR_WRITE_ERROR;
}

std::string str2hex(std::string_view text) {
    std::string hex;
    append_hex(hex, text);
    return hex;
}

void append_hex(std::string& out, std::string_view text) {
    const size_t start = out.size();
    out.resize(start + text.size() * 2);
    char* digits = out.data() + start;
    for (size_t i = 0; i < text.size(); i++)
        std::memcpy(digits + i * 2, BYTE_DIGITS[uint8_t(text[i])].data(), 2);
}

int hex2str(std::string_view hex, std::string& out) {
    if (hex.size() % 2 != 0)
        return ODD_HEX_LENGTH;
    const size_t count = hex.size() / 2;
    out.resize(count);
    const char* digits = hex.data();
    char* bytes = out.data(); // without it each byte's store would make the string be read anew
    for (size_t i = 0; i < count; i++) {
        const int high = hex_digit(digits[i * 2]);
        const int low = hex_digit(digits[i * 2 + 1]);
        // Both are digits, as in all but damaged text, or one may stand alone.
        const int byte =
            (high | low) >= 0 ? high * 16 + low : hex_pair(digits[i * 2], digits[i * 2 + 1]);
        if (byte == NOT_A_DIGIT)
            return BAD_HEX_DIGIT;
        bytes[i] = char(byte);
    }
    return 0;
}

} // namespace tarquil
