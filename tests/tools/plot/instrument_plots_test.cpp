// Tests of the points of waveform and envelope plots.

#include "tools/plot/instrument_plots.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "curves/wave_shape.h"
#include "player/shared_waveforms.h"

namespace tarquil {

namespace {

using testing::ElementsAre;

TEST(WaveShape, TheMixIsTheSumOfWhatIsHeard) {
    Instrument instrument; // mix 0: oscillator 1 alone
    instrument.set_controller(CTRL_OSC1_TYPE, 1);
    const WaveShape alone = render_wave_shape(shared_waveforms(), instrument.get_bytes(), 69, 3000);
    EXPECT_TRUE(alone.parts[1].empty());
    EXPECT_TRUE(alone.parts[2].empty());
    EXPECT_EQ(alone.mix, alone.parts[0]);
    // A sine of 440 Hz; the default fine tune's byte stands for 1/64 of a semitone or less, a table
    // of 4096 samples is off by half a step.
    const double frequency =
        440.0 * std::exp2(double(map_char_to_float(CTRL_OSC1_FINE_TUNE, instrument.get_controller(
                                                                            CTRL_OSC1_FINE_TUNE))) /
                          12.0);
    for (unsigned i = 0; i < 3000; i += 77)
        EXPECT_NEAR(double(alone.mix[i]), std::sin(2 * M_PI * frequency * i / 44100), 0.004) << i;

    instrument.set_controller(CTRL_OSC1_OSC2_MIX, 127);
    instrument.set_controller(CTRL_OSC3_VOLUME, 127); // 3 times
    instrument.set_controller(CTRL_OSC3_TYPE, instrument.get_controller(CTRL_OSC2_TYPE));
    const WaveShape mixed = render_wave_shape(shared_waveforms(), instrument.get_bytes(), 69, 100);
    EXPECT_TRUE(mixed.parts[0].empty());
    for (unsigned i = 0; i < 100; i++)
        EXPECT_FLOAT_EQ(mixed.mix[i], mixed.parts[1][i] + mixed.parts[2][i]);
    EXPECT_NEAR(mixed.parts[2][20], 3 * mixed.parts[1][20], 0.001F);

    instrument.set_controller(CTRL_OSC1_OSC2_RING_MODULATOR, 1);
    instrument.set_controller(CTRL_OSC3_VOLUME, 0);
    const WaveShape ring = render_wave_shape(shared_waveforms(), instrument.get_bytes(), 69, 100);
    for (unsigned i = 0; i < 100; i++)
        EXPECT_FLOAT_EQ(ring.mix[i], ring.parts[0][i] * ring.parts[1][i]);
}

TEST(WaveShape, EveryNoteAndPeriodIsDrawnToItsEnd) {
    for (const int note : {0, 60, 127}) {
        const Plot plot = plot_wave(Instrument(), note, 3);
        EXPECT_GE(plot.curves[0].points.back().x, plot.x.get_maximum()) << note;
        EXPECT_NEAR(plot.x.get_maximum(), 3000.0 / (440 * std::exp2((note - 69) / 12.0)), 0.01);
    }
}

double level_at(const std::vector<PlotPoint>& points, double time) {
    for (size_t i = 1; i < points.size(); i++) {
        const PlotPoint& before = points[i - 1];
        const PlotPoint& after = points[i];
        if (after.x >= time && after.x > before.x)
            return before.y + (after.y - before.y) * (time - before.x) / (after.x - before.x);
    }
    return points.back().y;
}

TEST(EnvelopeShape, CornersLieWhereTheControllersPutThem) {
    Instrument instrument;
    instrument.set_controller(CTRL_ENV1_ATTACK, 127);
    instrument.set_controller(CTRL_ENV1_DECAY, 127);
    instrument.set_controller(CTRL_ENV1_SUSTAIN, 64);
    instrument.set_controller(CTRL_ENV1_RELEASE, 127);
    const double two_seconds = std::floor(std::pow(1 + 0.342624187 * 127, 3)) / 44100;
    const double sustain = std::pow(64.0 / 127, 3);
    const std::vector<PlotPoint> points = envelope_points(instrument.get_bytes(), 0, 5.0);
    EXPECT_EQ(points.front().y, 0.0);
    EXPECT_NEAR(level_at(points, two_seconds / 2), 0.5, 0.001);
    EXPECT_NEAR(level_at(points, two_seconds), 1.0, 0.0001);
    EXPECT_NEAR(level_at(points, 2 * two_seconds), sustain, 0.0001);
    EXPECT_NEAR(level_at(points, 5.0), sustain, 0.0001);
    EXPECT_NEAR(level_at(points, 5.0 + two_seconds / 2), sustain / 2, 0.0001);
    // Released half way up the attack, it falls from there.
    const std::vector<PlotPoint> early =
        envelope_points(instrument.get_bytes(), 0, two_seconds / 2);
    EXPECT_NEAR(level_at(early, two_seconds / 2), 0.5, 0.001);
    EXPECT_NEAR(level_at(early, two_seconds), 0.25, 0.001);
    EXPECT_NEAR(points.back().x, 5.0 + two_seconds, 0.0001);
    EXPECT_EQ(points.back().y, 0.0);
}

TEST(EnvelopeShape, NoHoldAndTheLongestHoldAreWithinTheRange) {
    for (const double hold : {0.0, MAX_HOLD}) {
        const Plot plot = plot_envelopes(Instrument(), hold);
        ASSERT_EQ(plot.curves.size(), 3U);
        for (const PlotCurve& curve : plot.curves) {
            EXPECT_EQ(curve.points.back().y, 0.0);
            EXPECT_LE(curve.points.back().x, plot.x.get_maximum());
        }
    }
}

TEST(FilterPlots, ANarrowNotchIsDrawnToItsTip) {
    FilterSettings notch;
    notch.type = FILTER_NOTCH;
    notch.depth = 1;
    notch.cutoff_octaves = 5.4321F;
    notch.resonance = 30.0F;
    const Plot plot = plot_filter(notch);
    double lowest = 0.0;
    for (const PlotPoint& point : plot.curves[0].points)
        lowest = std::min(lowest, point.y);
    EXPECT_LT(lowest, -40.0);
    EXPECT_LE(plot.y.get_minimum(), -48.0);
}

TEST(FilterPlots, TheSumIsVoicePlusChannel) {
    Instrument instrument;
    instrument.set_name("bass");
    instrument.set_controller(CTRL_FILTER1_TYPE, FILTER_LOWPASS);
    instrument.set_controller(CTRL_FILTER1_DEPTH, 2);
    instrument.set_controller(CTRL_FILTER1_CUTOFF, 64);
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++)
        instrument.set_controller(CTRL_CHAN_FILTER1_TYPE + 4 * i, FILTER_HIGHPASS);
    const Plot plot = plot_instrument_filters(instrument, 60);
    EXPECT_EQ(plot.title, "Filters: bass");
    ASSERT_EQ(plot.curves.size(), 3U);
    EXPECT_THAT(plot.curves[1].details, ElementsAre("lowpass", "658 Hz, Q 1.48"));
    EXPECT_EQ(plot.curves[2].details.size(), 4U);
    for (size_t i = 0; i < plot.curves[0].points.size(); i++)
        EXPECT_NEAR(plot.curves[0].points[i].y,
                    plot.curves[1].points[i].y + plot.curves[2].points[i].y, 1e-9);
}

} // namespace

} // namespace tarquil
