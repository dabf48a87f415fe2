// System exclusive messages that General MIDI players know.
//
// Sources: "General MIDI System Level 1" and "Level 2", "Universal System Exclusive Messages" (MIDI
// Manufacturers Association); the address maps of the GS and XG formats.

#include "midi/gm/sysex.h"

#include <algorithm>
#include <numeric>

namespace tarquil {

namespace {

constexpr uint8_t END = 0xF7;
constexpr uint8_t UNIVERSAL = 0x7E;
constexpr uint8_t UNIVERSAL_REAL_TIME = 0x7F;
constexpr uint8_t GS_MAKER = 0x41;
constexpr uint8_t XG_MAKER = 0x43;

SysexMessage read_general_midi(std::span<const uint8_t> body) {
    constexpr SysexKind KINDS[] = {SysexKind::UNKNOWN, SysexKind::GM_ON, SysexKind::GM_OFF,
                                   SysexKind::GM2_ON};
    if (body.size() == 4 && body[2] == 0x09 && body[3] < std::size(KINDS))
        return {.kind = KINDS[body[3]]};
    return {};
}

SysexMessage read_device_control(std::span<const uint8_t> body) {
    if (body.size() != 6 || body[2] != 0x04)
        return {};
    const unsigned value = unsigned(body[5]) << 7U | body[4];
    switch (body[3]) {
    case 1:
        return {.kind = SysexKind::MASTER_VOLUME, .value = value};
    case 2:
        return {.kind = SysexKind::MASTER_BALANCE, .value = value};
    case 3:
        return {.kind = SysexKind::MASTER_FINE, .value = value};
    case 4:
        return {.kind = SysexKind::MASTER_COARSE, .value = body[5]};
    default:
        return {};
    }
}

// Parts in the order of the address map: channel 10 first.
unsigned gs_channel(unsigned part) {
    if (part == 0)
        return 9;
    return part <= 9 ? part - 1 : part;
}

SysexMessage read_gs(std::span<const uint8_t> body) {
    // maker, device, model, 0x12, three bytes of address, one of data, check sum
    if (body.size() != 9 || body[2] != 0x42 || body[3] != 0x12)
        return {};
    const unsigned sum = std::accumulate(body.begin() + 4, body.end(), 0U);
    if (sum % 128 != 0)
        return {};
    const unsigned address = unsigned(body[4]) << 16U | unsigned(body[5]) << 8U | body[6];
    const unsigned data = body[7];
    constexpr unsigned GS_MODE = 0x40007F;
    constexpr unsigned SYSTEM_MODE = 0x00007F;
    constexpr unsigned VOLUME = 0x400004;
    constexpr unsigned PART_MASK = 0xFFF0FF;
    constexpr unsigned RHYTHM = 0x401015;
    if (address == GS_MODE || address == SYSTEM_MODE)
        return {.kind = SysexKind::GS_RESET};
    if (address == VOLUME)
        return {.kind = SysexKind::GS_VOLUME, .value = data};
    if ((address & PART_MASK) == RHYTHM)
        return {.kind = SysexKind::GS_RHYTHM_PART,
                .value = data,
                .channel = gs_channel(address >> 8U & 0x0FU)};
    return {};
}

SysexMessage read_xg(std::span<const uint8_t> body) {
    constexpr uint8_t SYSTEM_ON[] = {0x4C, 0x00, 0x00, 0x7E, 0x00};
    if (body.size() == 7 && (body[1] & 0xF0U) == 0x10 &&
        std::equal(body.begin() + 2, body.end(), std::begin(SYSTEM_ON)))
        return {.kind = SysexKind::XG_ON};
    return {};
}

} // namespace

SysexMessage read_sysex(std::span<const uint8_t> bytes) {
    if (bytes.size() < 3 || bytes.back() != END)
        return {};
    const std::span<const uint8_t> body = bytes.subspan(1, bytes.size() - 2);
    if (std::any_of(body.begin(), body.end(), [](uint8_t byte) { return byte >= 0x80; }))
        return {};
    switch (body[0]) {
    case UNIVERSAL:
        return read_general_midi(body);
    case UNIVERSAL_REAL_TIME:
        return read_device_control(body);
    case GS_MAKER:
        return read_gs(body);
    case XG_MAKER:
        return read_xg(body);
    default:
        return {};
    }
}

} // namespace tarquil
