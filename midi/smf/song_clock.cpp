// From ticks to samples, without rounding on the way.

#include "midi/smf/song_clock.h"

#include "midi/smf/smf_reader.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

TickLength tick_length(uint16_t division) {
    if (division < 0x8000)
        return {.weight = 500000, .denominator = division * uint64_t(1000000)};

    const unsigned frames_per_second = 256U - (division >> 8);
    const uint64_t ticks_per_frame = division & 0xFFU;
    switch (frames_per_second) {
    case 24:
    case 25:
    case 30:
        return {.weight = 1,
                .denominator = frames_per_second * ticks_per_frame,
                .follows_tempo = false};
    case 29: // drop frame: 30000 / 1001 frames a second
        return {.weight = 1001, .denominator = 30000 * ticks_per_frame, .follows_tempo = false};
    default:
        return {.weight = 1, .denominator = 0, .follows_tempo = false};
    }
}

bool SongClock::advance_to(uint64_t new_tick) {
    // The denominator is below 2^35, so the limit fits into 51 bits; the sum is safe once the
    // number of ticks is known to be within the limit.
    const uint64_t limit = MAX_SONG_SECONDS * tick.denominator;
    const uint64_t ticks = new_tick - current_tick;
    if (ticks > (limit - elapsed) / tick.weight)
        return false;
    elapsed += ticks * tick.weight;
    current_tick = new_tick;
    return true;
}

void SongClock::set_tempo(uint32_t microseconds) {
    if (tick.follows_tempo)
        tick.weight = microseconds;
}

uint32_t SongClock::sample() const {
    const uint64_t seconds = elapsed / tick.denominator;
    const uint64_t rest = elapsed % tick.denominator;
    return uint32_t(seconds * SAMPLE_RATE + rest * SAMPLE_RATE / tick.denominator);
}

} // namespace tarquil
