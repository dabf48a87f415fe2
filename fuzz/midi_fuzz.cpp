// Fuzz target of the MIDI file reader: any bytes give a song in time order or a failure.

#include <cstddef>
#include <cstdint>

#include "common/assertion.h"
#include "common/failure.h"
#include "midi/smf/smf_reader.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    try {
        const Song song = read_song({data, size});
        uint32_t last = 0;
        for (const SongMessage& message : song.messages) {
            TARQ_ASSERT(message.time >= last);
            TARQ_ASSERT(message.bytes[0] >= 0x80);
            TARQ_ASSERT(message.bytes[1] < 0x80 && message.bytes[2] < 0x80);
            last = message.time;
        }
        size_t position = 0;
        for (const SongExclusive& exclusive : song.exclusives) {
            TARQ_ASSERT(exclusive.position >= position);
            TARQ_ASSERT(exclusive.position <= song.messages.size());
            TARQ_ASSERT(exclusive.bytes.front() == 0xF0 && exclusive.bytes.back() == 0xF7);
            position = exclusive.position;
        }
        TARQ_ASSERT(song.end_time >= last);
        TARQ_ASSERT(song.end_time <= MAX_SONG_SECONDS * 44100U);
    } catch (const BadInput&) {
    }
    return 0;
}

} // namespace tarquil
