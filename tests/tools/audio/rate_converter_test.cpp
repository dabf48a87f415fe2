// Tests of the conversion to a file's sample rate; `./dev formats` compares its bytes with hosts'.

#include "tools/audio/rate_converter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarquil {

namespace {

constexpr size_t SECOND_OF_FRAMES = 44100;

// One second of a sine, converted; cut into pieces of `piece` frames.
std::vector<float> convert_sine(double frequency_hz, int rate, size_t piece) {
    std::vector<float> input;
    for (size_t i = 0; i < SECOND_OF_FRAMES; i++) {
        const double value = std::sin(2.0 * M_PI * frequency_hz * double(i) / 44100.0) / 2.0;
        input.insert(input.end(), {float(value), float(-value)});
    }
    std::vector<float> output;
    RateConverter converter(rate, [&](const float* frames, uint64_t num_frames) {
        output.insert(output.end(), frames, frames + 2 * num_frames);
    });
    for (size_t i = 0; i < SECOND_OF_FRAMES; i += piece)
        converter.write(&input[2 * i], std::min(piece, SECOND_OF_FRAMES - i));
    converter.finish();
    return output;
}

TEST(RateConverter, KeepsPitchLevelAndLength) {
    for (const int rate : {22050, 48000, 96000}) {
        const std::vector<float> output = convert_sine(1000.0, rate, 256);
        ASSERT_NEAR(double(output.size()) / 2, double(rate), 1.0) << rate;
        // Away from the ends, where the filter sees the silence around the sound.
        for (size_t i = size_t(rate) / 4; i < size_t(rate) * 3 / 4; i++) {
            const double value = std::sin(2.0 * M_PI * 1000.0 * double(i) / rate) / 2.0;
            ASSERT_NEAR(output[2 * i], value, 1e-4) << rate;
            ASSERT_NEAR(output[2 * i + 1], -value, 1e-4) << rate;
        }
    }
}

TEST(RateConverter, RemovesWhatTheNewRateCannotHold) {
    const std::vector<float> output = convert_sine(15000.0, 22050, 2048);
    for (size_t i = output.size() / 4; i < output.size() * 3 / 4; i++)
        ASSERT_NEAR(output[i], 0.0F, 1e-4);
}

} // namespace

} // namespace tarquil
