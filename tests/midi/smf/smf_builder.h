// Small MIDI files made in memory.

#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace tarquil {

using SmfBytes = std::vector<uint8_t>;

inline void append_big_endian(SmfBytes& bytes, uint32_t number, int num_bytes) {
    for (int i = num_bytes - 1; i >= 0; i--)
        bytes.push_back(uint8_t(number >> (8 * i)));
}

inline void append_chunk(SmfBytes& bytes, std::string_view type, const SmfBytes& body) {
    bytes.insert(bytes.end(), type.begin(), type.end());
    append_big_endian(bytes, uint32_t(body.size()), 4);
    bytes.insert(bytes.end(), body.begin(), body.end());
}

inline SmfBytes smf_header(unsigned format, unsigned num_tracks, unsigned division) {
    SmfBytes body;
    append_big_endian(body, format, 2);
    append_big_endian(body, num_tracks, 2);
    append_big_endian(body, division, 2);
    SmfBytes bytes;
    append_chunk(bytes, "MThd", body);
    return bytes;
}

inline SmfBytes make_smf(unsigned format, unsigned division,
                         std::initializer_list<SmfBytes> tracks) {
    SmfBytes bytes = smf_header(format, unsigned(tracks.size()), division);
    for (const SmfBytes& track : tracks)
        append_chunk(bytes, "MTrk", track);
    return bytes;
}

// Two tracks: tempo changes (half, then a quarter of a second for a quarter note of 96 ticks), and
// a phrase with running status, a system exclusive message and a pitch bend.  0.9 s long.
inline SmfBytes small_song() {
    return make_smf(1, 96,
                    {{0x00, 0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20, 0x60, 0xFF, 0x51, 0x03, 0x03, 0xD0,
                      0x90, 0x00, 0xFF, 0x2F, 0x00},
                     {0x00, 0xC0, 0x05, 0x00, 0x90, 0x3C, 0x64, 0x60, 0x3E, 0x64, 0x00,
                      0xF0, 0x03, 0x7E, 0x7F, 0xF7, 0x30, 0x90, 0x3C, 0x00, 0x60, 0x3E,
                      0x00, 0x00, 0xE0, 0x00, 0x40, 0x00, 0xFF, 0x2F, 0x00}});
}

} // namespace tarquil
