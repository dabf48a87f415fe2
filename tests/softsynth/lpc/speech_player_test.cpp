// Speech made audible.

#include "softsynth/lpc/speech_player.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/softsynth/lpc/speech_samples.h"

namespace tarquil {

namespace {

constexpr SpeechVoice VOICES[] = {SpeechVoice::OWN, SpeechVoice::FIXED, SpeechVoice::CARRIER,
                                  SpeechVoice::WHISPER};

// FNV-1a over the samples' bits.
uint64_t hash_of(const std::vector<float>& samples) {
    uint64_t hash = 14695981039346656037U;
    for (const float sample : samples) {
        uint32_t bits = 0;
        std::memcpy(&bits, &sample, sizeof bits);
        hash = (hash ^ bits) * 1099511628211U;
    }
    return hash;
}

std::vector<float> saw(size_t count, double hz) {
    std::vector<float> samples(count);
    for (size_t i = 0; i < count; i++)
        samples[i] = float(0.4 * std::fmod(double(i) * hz / SAMPLE_RATE, 1.0) - 0.2);
    return samples;
}

std::vector<float> speak_with(const Speech& speech, const SpeechSettings& settings,
                              const std::vector<float>& carrier, uint32_t block) {
    std::vector<float> out(carrier.size());
    SpeechPlayer player(speech, settings);
    for (uint32_t done = 0; done < out.size(); done += block)
        player.render(carrier.data() + done, out.data() + done,
                      std::min(block, uint32_t(out.size()) - done));
    return out;
}

} // namespace

// The same bits on every machine: printed once, and since then the definition of the sound.
TEST(SpeechPlayer, SoundIsWhatItWas) {
    const Speech speech = random_speech(40, 21);
    const std::vector<float> carrier = saw(speech_length(speech, 1.0), 100.0);
    const uint64_t expected[] = {297265181838696979U, 16234037404518029402U, 14163764776978072058U,
                                 8477832687147217629U};
    for (size_t i = 0; i < std::size(VOICES); i++)
        EXPECT_EQ(hash_of(speak_with(speech, {VOICES[i], 110.0, 1.0}, carrier, 4096)), expected[i])
            << "voice " << i;
}

TEST(SpeechPlayer, BlocksDoNotMatter) {
    const Speech speech = vowels(12, 130.0);
    for (const SpeechVoice voice : VOICES) {
        const SpeechSettings settings{voice, 90.0, 0.77};
        const std::vector<float> carrier = saw(speech_length(speech, 0.77), 220.0);
        const std::vector<float> whole = speak_with(speech, settings, carrier, 1U << 20U);
        EXPECT_EQ(speak_with(speech, settings, carrier, 1), whole);
        EXPECT_EQ(speak_with(speech, settings, carrier, 67), whole);
    }
}

TEST(SpeechPlayer, AnyFramesGiveFiniteBoundedSound) {
    for (unsigned seed = 0; seed < 30; seed++) {
        const Speech speech = random_speech(50, seed);
        for (const SpeechVoice voice : VOICES) {
            for (const float sample : speak(speech, {voice, 400.0, 3.0})) {
                ASSERT_TRUE(std::isfinite(sample)) << "seed " << seed;
                // Full level is 2, a peak is less than a hundred times that, and the emphasis taken
                // back at most 20 times.
                ASSERT_LT(std::fabs(sample), 4000.0F) << "seed " << seed;
            }
        }
    }
}

TEST(SpeechPlayer, SpeedStretchesTimeAndKeepsThePitch) {
    Speech speech = vowels(50, 100.0);
    for (SpeechFrame& frame : speech.frames)
        frame.lines = vowel_lines();
    for (const double speed : {0.5, 1.0, 2.0, 4.0, -1.0}) {
        const std::vector<float> samples = speak(speech, {SpeechVoice::OWN, 0.0, speed});
        EXPECT_NEAR(double(samples.size()), 50 * 882 / std::fabs(speed), 21.0);
        // Between the harmonics of 100 Hz there is nothing.
        const std::span<const float> middle =
            std::span(samples).subspan(samples.size() / 4, 441 * 8);
        EXPECT_GT(power_at(middle, 400.0), 300.0 * power_at(middle, 450.0)) << "speed " << speed;
    }
}

TEST(SpeechPlayer, EndsWhenItSaysSo) {
    const Speech speech = vowels(5, 100.0);
    SpeechPlayer player(speech, {});
    std::vector<float> samples(5 * 882 + 100, 1.0F);
    player.render(nullptr, samples.data(), 5 * 882 - 1);
    EXPECT_FALSE(player.is_finished());
    player.render(nullptr, samples.data() + 5 * 882 - 1, 101);
    EXPECT_TRUE(player.is_finished());
    EXPECT_NE(samples[5 * 882 - 1], 0.0F);
    EXPECT_EQ(std::vector<float>(samples.end() - 100, samples.end()), std::vector<float>(100));
    const Speech nothing;
    EXPECT_TRUE(SpeechPlayer(nothing, {}).is_finished());
}

TEST(SpeechPlayer, BackwardsIsTheMirroredSpeech) {
    Speech speech = vowels(9, 150.0);
    speech.frames[2].level = 100;
    Speech mirrored = speech;
    speech.frames[4].bend = 4;
    std::reverse(mirrored.frames.begin(), mirrored.frames.end());
    mirrored.frames[3].bend = 4; // the bend belongs to the earlier of two frames
    const std::vector<float> backwards = speak(speech, {SpeechVoice::OWN, 0.0, -1.0});
    const std::vector<float> forwards = speak(mirrored);
    ASSERT_EQ(backwards.size(), forwards.size());
    // Where the frames' distance is no whole number of 1/256, it is rounded the other way.
    for (size_t i = 0; i < forwards.size(); i++)
        ASSERT_NEAR(backwards[i], forwards[i], 2e-3) << i;
}

} // namespace tarquil
