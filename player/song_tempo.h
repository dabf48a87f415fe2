// A song's tempo as a host's.

#pragma once

#include "midi/smf/smf_reader.h"
#include "player/host_tempo.h"

namespace tarquil {

inline HostTempo host_tempo(const SongTempo& tempo) {
    return {.quarters_per_minute = tempo.quarters_per_minute,
            .place = HostTempo::Place{.position = tempo.position,
                                      .bar_start = tempo.bar_start,
                                      .bar_length = tempo.bar_length}};
}

} // namespace tarquil
