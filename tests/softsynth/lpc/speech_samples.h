// Speech and sounds for tests, made on the spot.

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <span>
#include <vector>

#include "softsynth/lpc/exact_math.h"
#include "softsynth/lpc/line_spectrum.h"
#include "softsynth/lpc/speech.h"
#include "softsynth/lpc/speech_player.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

// Lines of five resonances; `shift` moves the lowest ones.
inline std::array<uint8_t, LPC_ORDER> vowel_lines(int shift = 0) {
    std::array<uint8_t, LPC_ORDER> lines{18, 26, 60, 70, 104, 112, 150, 160, 200, 215};
    for (size_t i = 0; i < 4; i++)
        lines[i] = uint8_t(lines[i] + shift);
    return lines;
}

inline LineCosines line_cosines(const std::array<uint8_t, LPC_ORDER>& lines) {
    LineCosines cosines{};
    for (size_t i = 0; i < LPC_ORDER; i++)
        cosines[i] = std::cos(PI * (lines[i] + 0.5) / 256.0);
    return cosines;
}

// Voice of `hz` that moves between two vowels.
inline Speech vowels(size_t num_frames, double hz) {
    Speech speech{150, 255, {}};
    for (size_t i = 0; i < num_frames; i++)
        speech.frames.push_back({vowel_lines(int(i / 8 % 2) * 8), 180, nearest_pitch(hz), 7});
    return speech;
}

// Any bytes.
inline Speech random_speech(size_t num_frames, unsigned seed) {
    std::mt19937 random(seed);
    Speech speech{uint8_t(random()), uint8_t(random()), {}};
    for (size_t i = 0; i < num_frames; i++) {
        SpeechFrameBytes bytes{};
        std::generate(bytes.begin(), bytes.end(), [&] { return uint8_t(random()); });
        speech.frames.push_back(unpack_frame(bytes));
    }
    return speech;
}

inline std::vector<float> speak(const Speech& speech, const SpeechSettings& settings = {}) {
    std::vector<float> samples(speech_length(speech, settings.speed));
    const std::vector<float> carrier(samples.size());
    SpeechPlayer(speech, settings).render(carrier.data(), samples.data(), uint32_t(samples.size()));
    return samples;
}

inline double power_of(std::span<const float> samples) {
    double sum = 0.0;
    for (const float sample : samples)
        sum += double(sample) * double(sample);
    return sum / double(samples.size());
}

// |X(f)|^2 at one frequency.
inline double power_at(std::span<const float> samples, double hz) {
    double real = 0.0;
    double imag = 0.0;
    for (size_t i = 0; i < samples.size(); i++) {
        const double angle = 2.0 * PI * hz * double(i) / SAMPLE_RATE;
        real += double(samples[i]) * std::cos(angle);
        imag += double(samples[i]) * std::sin(angle);
    }
    return real * real + imag * imag;
}

} // namespace tarquil
