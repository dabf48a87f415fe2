// A piece of speech: what a file holds and a slot plays.

#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "softsynth/lpc/speech_frame.h"

namespace tarquil {

// Ten minutes.
inline constexpr size_t MAX_SPEECH_FRAMES = 30000;

struct Speech {
    // The all-pass coefficient of the synthesis filter in 1/256.
    uint8_t warping_256ths = 0;
    // Where the recording's spectrum ends, in 100 Hz; from 200 on it does not.
    uint8_t band_limit_100hz = 255;
    // Frame i describes the sound at sample (i + 1/2) SPEECH_FRAME_SAMPLES.
    std::vector<SpeechFrame> frames;

    [[nodiscard]] double warping() const { return double(warping_256ths) / 256.0; }

    // At least 1 kHz, whatever the byte.
    [[nodiscard]] double band_limit_hz() const {
        return 100.0 * double(std::max(band_limit_100hz, uint8_t(10)));
    }

    bool operator==(const Speech&) const = default;
};

// Emphasis x[n] - EMPHASIS x[n-1] before the analysis, undone behind the synthesis filter, spares
// the filter the fall of speech towards high frequencies.
inline constexpr float EMPHASIS = 0.95F;

} // namespace tarquil
