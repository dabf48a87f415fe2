// The song that the formats are compared with, as messages and as a MIDI file for the renderer.

#include "tests/formats/table/table_song.h"

#include <map>

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr uint32_t LAST_NOTE = 75000;
constexpr unsigned CONTROLLERS[] = {1, 7, 10, 11, 64, 71, 74, 91, 93};

// Seven bits a byte, the highest first.
void append_delta(SmfBytes& bytes, uint32_t ticks) {
    for (unsigned shift = 28; shift > 0; shift -= 7) {
        if (ticks >> shift != 0)
            bytes.push_back(uint8_t((ticks >> shift & 0x7FU) | 0x80U));
    }
    bytes.push_back(uint8_t(ticks & 0x7FU));
}

bool has_two_bytes(const SongMessage& message) {
    return (message.bytes[0] & 0xF0U) == 0xC0;
}

} // namespace

std::vector<SongMessage> table_song() {
    std::mt19937 random(11);
    const auto below = [&](unsigned count) { return unsigned(random() % count); };
    std::map<uint32_t, SongMessage> song;
    const auto add = [&](uint32_t frame, unsigned status, unsigned data1, unsigned data2) {
        while (song.contains(frame))
            frame++;
        song[frame] = {frame, {uint8_t(status), uint8_t(data1), uint8_t(data2)}};
    };
    for (unsigned channel = 0; channel < 16; channel++)
        add(channel, 0xC0U | channel, channel == 9 ? 0 : below(128), 0);
    for (uint32_t frame = 100; frame < LAST_NOTE; frame += 50 + below(700)) {
        const unsigned channel = below(16);
        const unsigned key = 36 + below(48);
        if (below(16) == 0)
            add(frame, 0xC0U | channel, channel == 9 ? 0 : below(128), 0);
        if (below(4) == 0)
            add(frame, 0xE0U | channel, below(128), below(128));
        if (below(3) == 0)
            add(frame, 0xB0U | channel, CONTROLLERS[below(std::size(CONTROLLERS))], below(128));
        add(frame, 0x90U | channel, key, 1 + below(127));
        add(frame + 500 + below(12000), 0x80U | channel, key, 64);
    }
    std::vector<SongMessage> messages;
    for (const auto& [frame, message] : song)
        messages.push_back(message);
    return messages;
}

SmfBytes midi_file(const std::vector<SongMessage>& song) {
    SmfBytes track;
    uint32_t time = 0;
    for (const SongMessage& message : song) {
        append_delta(track, message.frame - time);
        time = message.frame;
        track.insert(track.end(), message.bytes.begin(),
                     message.bytes.end() - (has_two_bytes(message) ? 1 : 0));
    }
    append_delta(track, 2 * TABLE_FRAMES - time);
    track.insert(track.end(), {0xFF, 0x2F, 0});
    return make_smf(0, uint32_t(SAMPLE_RATE) / 2, {track}); // two quarter notes a second
}

} // namespace tarquil
