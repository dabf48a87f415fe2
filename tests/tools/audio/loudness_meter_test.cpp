// Tests of peak and loudness.

#include "tools/audio/loudness_meter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tarquil {

namespace {

TEST(LoudnessMeter, MeasuresTheReferenceTone) {
    // EBU Tech 3341, case 1: a sine of 1000 Hz at -23 dBFS on both sides reads -23 LUFS.
    const double amplitude = std::pow(10.0, -23.0 / 20.0);
    for (const int rate : {44100, 48000}) {
        LoudnessMeter meter(rate);
        std::vector<float> second;
        for (int i = 0; i < rate; i++) {
            const double value = amplitude * std::sin(2.0 * M_PI * 1000.0 * i / rate);
            second.insert(second.end(), {float(value), float(value)});
        }
        for (int i = 0; i < 20; i++)
            meter.add(second.data(), uint64_t(rate));
        EXPECT_NEAR(meter.loudness_lufs().value(), -23.0, 0.1);
        EXPECT_NEAR(meter.peak_dbfs().value(), -23.0, 0.01);
    }
}

TEST(LoudnessMeter, HasNoLevelForSilence) {
    LoudnessMeter meter(44100);
    const std::vector<float> silence(2 * 44100);
    meter.add(silence.data(), 44100);
    EXPECT_FALSE(meter.peak_dbfs().has_value());
    EXPECT_FALSE(meter.loudness_lufs().has_value());
}

} // namespace

} // namespace tarquil
