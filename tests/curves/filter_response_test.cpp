// Tests of filter responses at points that theory gives, and of an instrument's settings.

#include "curves/filter_response.h"

#include <gtest/gtest.h>

#include <cmath>

#include "instrument/instrument.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

// 100 Hz ... 10 kHz: exact in the cutoff's octaves to 0.001 Hz.
FilterSettings filter_at(FilterType type, double cutoff, double q, int depth = 1) {
    FilterSettings filter;
    filter.type = type;
    filter.depth = depth;
    filter.cutoff_octaves = float(std::log2(cutoff / 20));
    filter.resonance = float(q);
    return filter;
}

double gain(const FilterSettings& filter, double frequency) {
    return filter_gains(filter, {frequency}).front();
}

TEST(FilterResponse, ABiquadHasItsQAtTheCutoff) {
    // |H| = Q at the cutoff of the cookbook's low-pass and high-pass; single precision: 0.01 dB.
    for (const double cutoff : {100.0, 1000.0, 10000.0}) {
        EXPECT_NEAR(gain(filter_at(FILTER_LOWPASS, cutoff, std::sqrt(0.5)), cutoff), -3.01, 0.01);
        EXPECT_NEAR(gain(filter_at(FILTER_HIGHPASS, cutoff, 4.0, 3), cutoff), 12.04, 0.01);
    }
    EXPECT_LT(gain(filter_at(FILTER_NOTCH, 1000, 1.0), 1000), -80.0);
    FilterSettings peak = filter_at(FILTER_PEAKING_EQ, 1000, 2.0);
    peak.gain = 0.25F;
    EXPECT_NEAR(gain(peak, 1000), 10.0, 0.01); // 20 log10((10^0.25)^2)
}

TEST(FilterResponse, AWaveshaperAddsItsSlopeForQuietSound) {
    // 0.93343276 before times 1.1850098 after the sections.
    const double slope = 20 * std::log10(0.93343276 * 1.1850098);
    for (const double frequency : {50.0, 1000.0, 5000.0}) {
        const FilterSettings plain = filter_at(FILTER_LOWPASS, 1000, 3.0, 2);
        FilterSettings shaped = plain;
        shaped.type = FilterType(FILTER_LOWPASS + NUM_BASE_FILTER_TYPES);
        EXPECT_NEAR(gain(shaped, frequency), gain(plain, frequency) + slope, 0.02) << frequency;
    }
    EXPECT_NEAR(gain(filter_at(FilterType(9), 1000, 3.0), 3000), slope, 0.02);
    EXPECT_TRUE(is_filter_on(filter_at(FilterType(9), 1000, 3.0, 0)));
}

TEST(FilterResponse, TheLadderHasFourPolesWithoutResonance) {
    const FilterSettings ladder = filter_at(FilterType(21), 1000, 0.0);
    EXPECT_NEAR(gain(ladder, 1000) - gain(ladder, 20), 4 * -3.01, 0.8); // its tuning is a fit
    EXPECT_NEAR(gain(ladder, 8000) - gain(ladder, 4000), -24.0, 2.0);
    EXPECT_FALSE(is_filter_on(filter_at(FILTER_LOWPASS, 1000, 1.0, 0)));
}

TEST(FilterResponse, ACurveThatRingsIsSmooth) {
    FilterSettings shaped = filter_at(FILTER_LOWPASS, 40, 100.0);
    shaped.type = FilterType(FILTER_LOWPASS + NUM_BASE_FILTER_TYPES);
    for (const FilterSettings& filter : {filter_at(FilterType(21), 1000, 7.5), shaped}) {
        const double cutoff = 20 * std::exp2(double(filter.cutoff_octaves));
        double last = MIN_GAIN_DB;
        for (double frequency = 8 * cutoff; frequency > 1.5 * cutoff; frequency /= 1.05) {
            const double now = gain(filter, frequency);
            EXPECT_GT(now, last) << frequency; // rises steadily down to the peak
            last = now;
        }
    }
}

TEST(FilterResponse, AnInstrumentsFiltersAreItsControllers) {
    Instrument instrument;
    instrument.set_controller(CTRL_FILTER1_TYPE, 14);
    instrument.set_controller(CTRL_FILTER1_DEPTH, 3);
    instrument.set_controller(CTRL_FILTER1_CUTOFF, 127);
    instrument.set_controller(CTRL_CHAN_FILTER4_TYPE, 6);
    instrument.set_controller(CTRL_CHAN_FILTER4_GAIN, 127);
    const FilterSettings voice = voice_filter_settings(instrument.get_bytes(), 69);
    EXPECT_EQ(voice.type, 14);
    EXPECT_EQ(voice.depth, 3);
    EXPECT_FLOAT_EQ(voice.cutoff_octaves, 10.0F);
    EXPECT_EQ(voice.key_frequency, 0.0F);
    instrument.set_controller(CTRL_FILTER1_KEY_FOLLOW, 1);
    EXPECT_EQ(voice_filter_settings(instrument.get_bytes(), 69).key_frequency, 440.0F);
    const FilterSettings last =
        equaliser_filter_settings(instrument.get_bytes(), channel_filter_rows(3));
    EXPECT_EQ(last.type, FILTER_PEAKING_EQ);
    EXPECT_FLOAT_EQ(last.gain, 0.5F);
    EXPECT_FALSE(
        is_filter_on(equaliser_filter_settings(instrument.get_bytes(), channel_filter_rows(2))));
}

} // namespace

} // namespace tarquil
