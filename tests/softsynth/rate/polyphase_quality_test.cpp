// The rate converter's filter: flat to 20 kHz, what images or folds 130 dB down.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "softsynth/rate/polyphase_stream.h"

namespace tarquil {
namespace {

constexpr double TWO_PI = 6.283185307179586;

struct Tone {
    double gain_db; // of the tone itself
    double rest_db; // of everything else against the input
};

// A sine of `frequency` Hz at the engine's rate as the host's rate has it.
Tone convert_tone(double rate, double frequency) {
    constexpr uint32_t CHUNK = 1024;
    PolyphaseStream stream;
    stream.activate(*RateRatio::of(rate), 0, CHUNK, 0);
    std::vector<float> left(1 << 16);
    std::vector<float> right(left.size());
    std::vector<float> chunk(2 * CHUNK);
    std::vector<float> out;
    uint64_t n = 0;
    while (out.size() < 16000) {
        for (uint32_t i = 0; i < CHUNK; i++, n++) {
            chunk[2 * i] = float(std::sin(TWO_PI * frequency / 44100.0 * double(n)));
            chunk[2 * i + 1] = -chunk[2 * i];
        }
        stream.write(chunk.data(), CHUNK);
        const auto count = uint32_t(stream.readable());
        stream.read(left.data(), right.data(), count);
        for (uint32_t i = 0; i < count; i++)
            EXPECT_EQ(left[i], -right[i]);
        out.insert(out.end(), left.begin(), left.begin() + count);
    }
    // The sine and the cosine that fit best, behind the filter's start, and what they leave.
    const size_t first = 4000;
    const auto angle = [&](size_t i) {
        return std::fmod(frequency / rate * double(i), 1.0) * TWO_PI;
    };
    double ss = 0.0;
    double sc = 0.0;
    double cc = 0.0;
    double ys = 0.0;
    double yc = 0.0;
    for (size_t i = first; i < out.size(); i++) {
        const double s = std::sin(angle(i));
        const double c = std::cos(angle(i));
        ss += s * s;
        sc += s * c;
        cc += c * c;
        ys += double(out[i]) * s;
        yc += double(out[i]) * c;
    }
    const double determinant = ss * cc - sc * sc;
    const double a = (ys * cc - yc * sc) / determinant;
    const double b = (yc * ss - ys * sc) / determinant;
    double rest = 1e-300;
    for (size_t i = first; i < out.size(); i++) {
        const double left_over = double(out[i]) - a * std::sin(angle(i)) - b * std::cos(angle(i));
        rest += left_over * left_over;
    }
    const double power = double(out.size() - first) / 2.0;
    return {20.0 * std::log10(std::hypot(a, b)), 10.0 * std::log10(rest / power)};
}

TEST(PolyphaseQuality, UpwardsItIsFlatTo20kHzWithoutImages) {
    for (const double rate : {44100.5, 45678.901, 47999.0, 48000.0, 88200.0, 96000.0, 123456.78,
                              176400.0, 192000.0, 384000.0, 768000.0}) {
        for (const double frequency : {30.0, 997.0, 10007.0, 15013.0, 19003.0, 20000.0}) {
            const Tone tone = convert_tone(rate, frequency);
            EXPECT_NEAR(tone.gain_db, 0.0, 0.01) << rate << " Hz: " << frequency;
            EXPECT_LT(tone.rest_db, -130.0) << rate << " Hz: " << frequency;
        }
    }
}

TEST(PolyphaseQuality, DownwardsNothingAudibleFolds) {
    for (const double rate :
         {44099.0, 42000.0, 40000.0, 32000.0, 22050.0, 16000.0, 12345.678, 8000.0, 1234.568}) {
        // Flat to where the transition begins, 0.19 of the band wide where nothing may fold.
        const double pass = std::max(0.81 * rate / 2.0, std::min(20000.0, 2.0 * rate - 68190.0));
        for (const double part : {0.02, 0.51, 1.0}) {
            const Tone tone = convert_tone(rate, part * pass);
            EXPECT_NEAR(tone.gain_db, 0.0, 0.01) << rate << " Hz: " << part * pass;
            EXPECT_LT(tone.rest_db, -130.0) << rate << " Hz: " << part * pass;
        }
        const double stop = std::max(rate / 2.0, rate - 20000.0) + 1.0;
        for (double frequency = stop; frequency < 22050.0; frequency += 0.13 * rate + 2000.0) {
            const Tone tone = convert_tone(rate, frequency);
            EXPECT_LT(tone.gain_db, -130.0) << rate << " Hz: " << frequency;
            EXPECT_LT(tone.rest_db, -130.0) << rate << " Hz: " << frequency;
        }
    }
}

} // namespace
} // namespace tarquil
