// A song's messages on the frames of a device's blocks.

#include "standalone/song_playback.h"

#include <algorithm>

namespace tarquil {

void SongPlayback::start(const RateRatio& device_ratio) {
    song_start += ratio.engine_time(block_start);
    block_start = 0;
    ratio = device_ratio;
}

// The first one that belongs to the engine's frame, or to a later one.
uint64_t SongPlayback::device_frame(uint32_t time) const {
    if (time <= song_start)
        return 0;
    const uint64_t engine_frame = time - song_start;
    auto frame = uint64_t(ratio.host_frame_from(int64_t(engine_frame)));
    while (frame > 0 && ratio.engine_time(frame - 1) >= engine_frame)
        frame--;
    return frame;
}

std::optional<SongPlayback::Due> SongPlayback::take(uint32_t last_frame) {
    if (ended)
        return std::nullopt;
    const auto frame_of = [this](uint32_t time) {
        return std::max(device_frame(time), block_start) - block_start;
    };
    const bool has_message = next_message < song.messages.size();
    const bool is_exclusive = next_exclusive < song.exclusives.size() &&
                              song.exclusives[next_exclusive].position <= next_message;
    uint32_t time = song.end_time;
    if (is_exclusive)
        time = song.exclusives[next_exclusive].time;
    else if (has_message)
        time = song.messages[next_message].time;
    if (next_tempo < song.tempos.size() && song.tempos[next_tempo].time <= time) {
        const SongTempo& tempo = song.tempos[next_tempo];
        const uint64_t frame = frame_of(tempo.time);
        if (frame > last_frame)
            return std::nullopt;
        next_tempo++;
        return Due{.frame = uint32_t(frame), .bytes = {}, .tempo = &tempo};
    }
    const uint64_t frame = frame_of(time);
    if (frame > last_frame)
        return std::nullopt;
    Due due{.frame = uint32_t(frame), .bytes = {}};
    if (is_exclusive)
        due.bytes = song.exclusives[next_exclusive++].bytes;
    else if (has_message)
        due.bytes = song.messages[next_message++].bytes;
    else
        ended = true;
    return due;
}

} // namespace tarquil
