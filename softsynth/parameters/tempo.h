// A tempo and a place in a song, as the engine is told them.

#pragma once

namespace tarquil {

// All but the first counted in quarter notes.
struct Tempo {
    double samples_per_quarter = 0.0; // 0: nothing follows a tempo
    double position = 0.0;            // since the song's start, of a run's first sample
    double bar_start = 0.0;           // of some bar; all beats are counted from it
    double bar_length = 0.0;          // 0: that bar has no end
};

} // namespace tarquil
