// A MIDI message of any length as one record.

#include "midi/gm/gm_message.h"

#include <algorithm>

namespace tarquil {

namespace {

static_assert(GM_SYSEX + unsigned(LAST_SYSEX_KIND) < GM_RELEASE_ALL);

bool is_damaged(std::span<const uint8_t> message) {
    if (message.empty() || !is_midi_status(message[0]))
        return true;
    if (message[0] >= MIDI_SYSTEM)
        return false;
    const size_t size = 1 + num_midi_data_bytes(message[0]);
    return message.size() < size ||
           std::any_of(message.begin() + 1, message.begin() + ptrdiff_t(size), is_midi_status);
}

// 14 bits of value, or 7 and a channel.
midi_event sysex_record(uint32_t time, const SysexMessage& sysex) {
    const bool has_channel = sysex.kind == SysexKind::GS_RHYTHM_PART;
    return {.time = time,
            .status = uint8_t(GM_SYSEX + unsigned(sysex.kind)),
            .data1 = uint8_t(sysex.value & 0x7FU),
            .data2 = uint8_t(has_channel ? sysex.channel : sysex.value >> 7U)};
}

} // namespace

midi_event gm_message(uint32_t time, std::span<const uint8_t> message) {
    if (is_damaged(message))
        return {.time = time, .status = GM_DAMAGED};
    if (message[0] == MIDI_SYSTEM)
        return sysex_record(time, read_sysex(message));
    if (message[0] > MIDI_SYSTEM)
        return {.time = time, .status = GM_OTHER_SYSTEM};
    return {.time = time,
            .status = message[0],
            .data1 = message[1],
            .data2 = num_midi_data_bytes(message[0]) == 2 ? message[2] : uint8_t(0)};
}

SysexMessage sysex_of(const midi_event& record) {
    const auto kind = SysexKind(record.status - GM_SYSEX);
    if (kind == SysexKind::GS_RHYTHM_PART)
        return {.kind = kind, .value = record.data1, .channel = record.data2};
    return {.kind = kind, .value = unsigned(record.data2) << 7U | record.data1};
}

} // namespace tarquil
