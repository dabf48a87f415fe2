// What a host, or a song, says of its tempo and place.

#pragma once

#include <optional>

namespace tarquil {

struct HostTempo {
    // The place, counted in quarter notes.
    struct Place {
        double position = 0.0;   // since the song's start
        double bar_start = 0.0;  // of the bar
        double bar_length = 0.0; // 0: not known
    };

    double quarters_per_minute = 0.0; // 0: not known
    std::optional<Place> place = {};  // while it plays
};

// Of so many beats of which a whole note has `beat_unit`.
inline double quarters(double beats, double beat_unit) {
    return beats * 4.0 / beat_unit;
}

} // namespace tarquil
