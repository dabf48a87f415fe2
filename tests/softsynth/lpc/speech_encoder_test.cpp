// A recording turned into frames, and what the analysis is made of.

#include "softsynth/lpc/speech_encoder.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>

#include "softsynth/lpc/line_refiner.h"
#include "softsynth/lpc/linear_prediction.h"
#include "softsynth/lpc/pitch_tracker.h"
#include "softsynth/lpc/power_spectrum.h"
#include "softsynth/lpc/speech_formants.h"
#include "tests/softsynth/lpc/speech_samples.h"
#include "tests/softsynth/signal/noise.h"

namespace tarquil {

namespace {

// The power that white noise of the same density has.
double density(std::span<const float> samples, double from_hz, double to_hz) {
    const auto first = size_t(from_hz / SPECTRUM_BIN_HZ);
    const auto last = size_t(to_hz / SPECTRUM_BIN_HZ);
    double sum = 0.0;
    const size_t num_frames = samples.size() / SPEECH_FRAME_SAMPLES - 2;
    for (size_t i = 1; i <= num_frames; i++) {
        const PowerSpectrum spectrum = power_spectrum(samples, i);
        sum += std::accumulate(spectrum.begin() + long(first), spectrum.begin() + long(last), 0.0);
    }
    return sum / double(num_frames * (last - first));
}

size_t count_voiced(const Speech& speech) {
    return size_t(std::count_if(speech.frames.begin(), speech.frames.end(),
                                [](const SpeechFrame& frame) { return frame.voicing > 0; }));
}

} // namespace

TEST(SpeechAnalysis, PredictorOfAKnownSpectrumIsItsOwn) {
    // 1 / |1 - 1.2 z^-1 + 0.7 z^-2|^2
    std::vector<double> powers;
    for (size_t i = 0; i < 512; i++) {
        const double x = PI * (double(i) + 0.5) / 512;
        const double real = 1.0 - 1.2 * std::cos(x) + 0.7 * std::cos(2 * x);
        const double imag = 1.2 * std::sin(x) - 0.7 * std::sin(2 * x);
        powers.push_back(1.0 / (real * real + imag * imag));
    }
    const Prediction prediction = predict(autocorrelation_of_spectrum(powers, 4));
    EXPECT_NEAR(prediction.predictor[1], -1.2, 1e-9);
    EXPECT_NEAR(prediction.predictor[2], 0.7, 1e-9);
    EXPECT_NEAR(prediction.predictor[3], 0.0, 1e-9);
    EXPECT_NEAR(prediction.error / 512, 1.0, 1e-9);
    EXPECT_EQ(predict(std::vector<double>(5)).predictor, (std::vector<double>{1, 0, 0, 0, 0}));
}

TEST(SpeechAnalysis, RefinedLinesAreThoseTheEnvelopeCameFrom) {
    const SpeechFrame frame{vowel_lines(), 180, 0, 0};
    const LineCosines cosines = line_cosines(frame.lines);
    double gain = 0.01 * 0.01;
    for (const double k : reflections_of_predictor(predictor_of_lines(cosines)))
        gain *= 1.0 - k * k;
    Envelope envelope{};
    for (size_t i = 0; i < ENVELOPE_POINTS; i++)
        envelope[i] =
            gain / predictor_power(cosines, std::cos(PI * (double(i) + 0.5) / ENVELOPE_POINTS));
    std::array<uint8_t, LPC_ORDER> moved = frame.lines;
    for (size_t i = 0; i < LPC_ORDER; i++)
        moved[i] = uint8_t(moved[i] + 3 * (i % 3) - 3);
    EXPECT_GT(measure_fit(moved, envelope, ENVELOPE_POINTS).distance_db, 1.0);
    const Fit fit = refine_lines(moved, envelope, ENVELOPE_POINTS);
    EXPECT_LT(fit.distance_db, 0.2);
    EXPECT_NEAR(fit.amplitude, 0.01, 2e-4);
}

TEST(PitchTracker, FollowsAGlideAndFindsNoneInNoise) {
    std::vector<float> samples(44100);
    double phase = 0.0;
    for (size_t i = 0; i < samples.size(); i++) {
        phase += (100.0 + 150.0 * double(i) / 44100.0) / SAMPLE_RATE;
        samples[i] = float(0.3 * std::exp(-8.0 * std::fmod(phase, 1.0)) *
                           std::sin(40.0 * std::fmod(phase, 1.0)));
    }
    const std::vector<double> pitches = track_pitch(samples);
    ASSERT_EQ(pitches.size(), 50U);
    for (size_t i = 2; i + 2 < pitches.size(); i++)
        EXPECT_NEAR(pitches[i] / (100.0 + 150.0 * (double(i) + 0.5) / 50.0), 1.0, 0.02) << i;
    for (const double hz : track_pitch(noise(44100, 0.3F)))
        EXPECT_EQ(hz, 0.0);
}

// What the player speaks comes back: lines, level, pitch and voice.
TEST(SpeechEncoder, FramesComeBackFromTheirSound) {
    Speech speech = vowels(40, 125.0);
    for (SpeechFrame& frame : speech.frames)
        frame.level = 190;
    const Speech again = encode_speech(speak(speech), speech.warping_256ths);
    ASSERT_EQ(again.frames.size(), speech.frames.size());
    EXPECT_EQ(again.band_limit_100hz, 200);
    for (size_t i = 2; i + 2 < speech.frames.size(); i++) {
        const SpeechFrame& frame = again.frames[i];
        EXPECT_NEAR(frame.pitch, nearest_pitch(125.0), 1) << i;
        EXPECT_GE(frame.voicing, 5) << i;
        EXPECT_NEAR(frame.level, 190, 6) << i;
        if (i % 8 < 2 || i % 8 > 5)
            continue; // on the way between two vowels
        double sum = 0.0;
        for (double hz = 200.0; hz < 15000.0; hz *= 1.1) {
            const double difference = frame_density_db(frame, again.warping(), hz) -
                                      frame_density_db(speech.frames[i], speech.warping(), hz);
            sum += difference * difference / 46.0;
        }
        EXPECT_LT(std::sqrt(sum), 3.0) << "dB in frame " << i;
    }
}

TEST(SpeechEncoder, NoiseHasNoVoiceAndAnEvenSpectrum) {
    const Speech speech = encode_speech(noise(44100, 0.2F));
    EXPECT_EQ(count_voiced(speech), 0U);
    // Ten lines that lie densest below know least of the topmost octave.
    const std::vector<float> spoken = speak(speech);
    const double white = power_of(noise(44100, 0.2F));
    for (const auto& [from_hz, to_hz, bound_db] : {std::array{200.0, 1000.0, 1.0},
                                                   {1000.0, 4000.0, 1.0},
                                                   {4000.0, 10000.0, 1.0},
                                                   {10000.0, 20000.0, 2.5}})
        EXPECT_NEAR(10 * std::log10(density(spoken, from_hz, to_hz) / white), 0.0, bound_db)
            << from_hz;
}

TEST(SpeechEncoder, FindsWhereARecordingEnds) {
    std::vector<float> samples = speak(vowels(50, 110.0));
    for (int i = 0; i < 2; i++) // as steep as a converter's
        BandLimit(5000.0).process(samples.data(), uint32_t(samples.size()));
    const Speech speech = encode_speech(samples);
    EXPECT_NEAR(speech.band_limit_hz(), 5000.0, 300.0);
    const PowerSpectrum spectrum = power_spectrum(speak(speech), 25);
    const auto loudest = [&](double from_hz) {
        const auto* const start = spectrum.begin() + long(from_hz / SPECTRUM_BIN_HZ);
        return *std::max_element(start, start + 20);
    };
    EXPECT_LT(loudest(5600.0), 1e-4 * loudest(4400.0));
}

TEST(SpeechEncoder, TakesAnySamples) {
    EXPECT_TRUE(encode_speech({}).frames.empty());
    EXPECT_EQ(encode_speech(std::vector<float>(1, 1.0F)).frames.size(), 1U);
    EXPECT_LT(power_of(speak(encode_speech(std::vector<float>(5000)))), 1e-10);
    std::vector<float> bad = noise(9000, 1.0F);
    bad[100] = std::numeric_limits<float>::quiet_NaN();
    bad[2000] = std::numeric_limits<float>::infinity();
    bad[3000] = -1e30F;
    for (const float sample : speak(encode_speech(bad)))
        ASSERT_TRUE(std::fabs(sample) < 20.0F);
}

} // namespace tarquil
