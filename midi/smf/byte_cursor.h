// A bounded walk through the bytes of a chunk, which knows its place in the file.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "common/failure.h"

namespace tarquil {

class ByteCursor {
  public:
    // `first_offset`: the place of the first byte in the file, for messages.
    ByteCursor(std::span<const uint8_t> all_bytes, size_t first_offset)
        : bytes(all_bytes), origin(first_offset) {}

    [[nodiscard]] bool at_end() const { return position == bytes.size(); }
    [[nodiscard]] size_t remaining() const { return bytes.size() - position; }
    [[nodiscard]] size_t offset() const { return origin + position; }

    [[noreturn]] void fail(const std::string& reason) const { fail_at(offset(), reason); }
    [[noreturn]] static void fail_at(size_t offset, const std::string& reason) {
        throw BadInput("byte " + std::to_string(offset) + ": " + reason);
    }

    // The next `count` bytes; `what` names them in the message when they are not all there.
    std::span<const uint8_t> take(size_t count, const char* what) {
        if (count > remaining())
            fail(std::string(what) + " is cut off");
        const std::span<const uint8_t> taken = bytes.subspan(position, count);
        position += count;
        return taken;
    }

    uint8_t take_byte(const char* what) { return take(1, what)[0]; }

    // A big-endian number of 1 to 4 bytes.
    uint32_t take_number(size_t num_bytes, const char* what) {
        uint32_t number = 0;
        for (const uint8_t byte : take(num_bytes, what))
            number = number << 8 | byte;
        return number;
    }

    // A number of 7 bits a byte, most significant first, at most 4 bytes.
    uint32_t take_variable_number(const char* what) {
        const size_t start = offset();
        uint32_t number = 0;
        for (int i = 0; i < 4; i++) {
            const uint8_t byte = take_byte(what);
            number = number << 7 | (byte & 0x7FU);
            if (byte < 0x80)
                return number;
        }
        fail_at(start, std::string(what) + " has more than four bytes");
    }

  private:
    std::span<const uint8_t> bytes;
    size_t position = 0;
    size_t origin;
};

} // namespace tarquil
