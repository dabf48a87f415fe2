// The serial number of an Ogg stream.

#include "tools/audio/ogg_serial.h"

#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <numeric>
#include <span>
#include <vector>

namespace tarquil {

namespace {

constexpr size_t HEADER_BYTES = 27;
constexpr size_t SERIAL_OFFSET = 14;
constexpr size_t CHECKSUM_OFFSET = 22;
constexpr size_t NUM_SEGMENTS_OFFSET = 26;
constexpr size_t MAX_SEGMENTS = 255;
constexpr size_t MAX_PAGE_BYTES = HEADER_BYTES + MAX_SEGMENTS + MAX_SEGMENTS * 255;

void store_little_endian(uint8_t* bytes, uint32_t number) {
    for (int i = 0; i < 4; i++)
        bytes[i] = uint8_t(number >> (8 * i));
}

// CRC-32 with the polynomial 0x04C11DB7, most significant bit first, no inversion.
std::array<uint32_t, 256> make_checksum_table() {
    std::array<uint32_t, 256> table{};
    for (uint32_t byte = 0; byte < 256; byte++) {
        uint32_t value = byte << 24;
        for (int bit = 0; bit < 8; bit++)
            value = value << 1 ^ ((value & 0x80000000U) != 0 ? 0x04C11DB7U : 0U);
        table[byte] = value;
    }
    return table;
}

uint32_t checksum(std::span<const uint8_t> bytes) {
    static const std::array<uint32_t, 256> table = make_checksum_table();
    uint32_t value = 0;
    for (const uint8_t byte : bytes)
        value = value << 8 ^ table[value >> 24 ^ byte];
    return value;
}

// The size of the page at the start of `bytes`; 0 when there is none, or not all of it.
size_t page_size(std::span<const uint8_t> bytes) {
    if (bytes.size() < HEADER_BYTES || std::memcmp(bytes.data(), "OggS", 4) != 0)
        return 0;
    const size_t num_segments = bytes[NUM_SEGMENTS_OFFSET];
    if (bytes.size() < HEADER_BYTES + num_segments)
        return 0;
    const auto segments = bytes.subspan(HEADER_BYTES, num_segments);
    const size_t size =
        std::accumulate(segments.begin(), segments.end(), HEADER_BYTES + num_segments);
    return size <= bytes.size() ? size : 0;
}

} // namespace

bool set_ogg_serial(int descriptor, uint32_t serial) {
    std::vector<uint8_t> page(MAX_PAGE_BYTES);
    off_t position = 0;
    for (;;) {
        const ssize_t count = pread(descriptor, page.data(), page.size(), position);
        if (count < 0)
            return false;
        const size_t size = page_size({page.data(), size_t(count)});
        if (size == 0)
            return true;
        store_little_endian(&page[SERIAL_OFFSET], serial);
        store_little_endian(&page[CHECKSUM_OFFSET], 0);
        store_little_endian(&page[CHECKSUM_OFFSET], checksum({page.data(), size}));
        if (pwrite(descriptor, page.data(), HEADER_BYTES, position) != ssize_t(HEADER_BYTES))
            return false;
        position += off_t(size);
    }
}

} // namespace tarquil
