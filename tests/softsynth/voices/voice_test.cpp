// Voices: tuning, modulation, portamento, bend, as heard.

#include "softsynth/voices/voice.h"

#include <gtest/gtest.h>

#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

constexpr uint32_t LENGTH = 32768;

double note_hz(double note) {
    return 440 * std::exp2((note - 69) / 12);
}

// Plays a note on channel 0 and returns the left side.
std::vector<float> play(EngineHost& host, int note, int velocity = 127) {
    host.note_on(0, note, velocity);
    return side(host.render(LENGTH), 0);
}

TEST(Voice, IsInTuneOverTheWholeRange) {
    for (const int note : {24, 45, 69, 93, 108}) {
        EngineHost host;
        host.set_plain(0, OSC_SINE);
        const std::vector<float> sound = play(host, note);
        const double level = amplitude_at(sound, note_hz(note));
        EXPECT_GT(level, 0.02) << note;
        // A third of a bin off on either side must be quieter, and by the same amount: the pitch is
        // within a fraction of a cent above the lowest notes.
        const double bin = 44100.0 / LENGTH;
        const double below = amplitude_at(sound, note_hz(note) - bin / 3);
        const double above = amplitude_at(sound, note_hz(note) + bin / 3);
        EXPECT_LT(below, level) << note;
        EXPECT_NEAR(below, above, level * 0.02) << note;
    }
}

TEST(Voice, DetunedCopiesSpreadEvenly) {
    EngineHost host;
    host.set_plain(0, OSC_SINE);
    host.set(0, CTRL_OSC1_MULTI_COUNT, 1); // three copies
    host.set(0, CTRL_OSC1_SPREAD, 127);    // one semitone either way
    const std::vector<float> sound = play(host, 69);
    const double centre = amplitude_at(sound, note_hz(69));
    // The master's crossovers tilt the response by up to a tenth over two semitones.
    EXPECT_NEAR(amplitude_at(sound, note_hz(68)), centre, centre * 0.1);
    EXPECT_NEAR(amplitude_at(sound, note_hz(70)), centre, centre * 0.1);
    EXPECT_LT(amplitude_at(sound, note_hz(69.5)), centre * 0.02);

    EngineHost single;
    single.set_plain(0, OSC_SINE);
    EXPECT_NEAR(centre * 3, amplitude_at(play(single, 69), note_hz(69)), 0.01)
        << "copies in phase are divided by their number";
}

TEST(Voice, PitchBendReachesAnOctaveAndSoundingNotes) {
    EngineHost host;
    host.set_plain(0, OSC_SINE);
    host.note_on(0, 69);
    host.render(4096);
    host.set(0, CTRL_PITCH_BEND_MSB, 0);
    host.set(0, CTRL_PITCH_BEND_LSB, 0);
    EXPECT_GT(amplitude_at(side(host.render(LENGTH), 0), 220), 0.05);
    host.set(0, CTRL_PITCH_BEND_MSB, 96);
    host.set(0, CTRL_PITCH_BEND_LSB, 0);
    EXPECT_GT(amplitude_at(side(host.render(LENGTH), 0), 440 * std::sqrt(2)), 0.05);
}

TEST(Voice, PortamentoGlidesFromTheSecondNoteOn) {
    EngineHost host;
    host.set_plain(0, OSC_SINE);
    host.set(0, CTRL_PORTAMENTO_TIME, 127); // one second
    EXPECT_GT(amplitude_at(play(host, 69), 440), 0.05) << "the first note does not glide";
    host.note_off(0, 69);
    host.note_on(0, 81);
    const std::vector<float> glide = side(host.render(44032), 0);
    const std::vector<float> middle(glide.begin() + 20050, glide.begin() + 24050);
    EXPECT_GT(amplitude_at(middle, 660), 0.05);
    EXPECT_LT(amplitude_at(middle, 880), 0.02);
    EXPECT_GT(amplitude_at(side(host.render(LENGTH), 0), 880), 0.05);
}

TEST(Voice, RingModulationGivesSumAndDifference) {
    EngineHost host;
    host.set_plain(0, OSC_SINE);
    host.set(0, CTRL_OSC2_TYPE, OSC_SINE);
    host.set(0, CTRL_OSC2_COARSE_TUNE, 64 + 19);
    host.set(0, CTRL_OSC1_OSC2_RING_MODULATOR, 1);
    const std::vector<float> sound = play(host, 69);
    const double upper = note_hz(69 + 19);
    EXPECT_GT(amplitude_at(sound, upper + 440), 0.03);
    EXPECT_GT(amplitude_at(sound, upper - 440), 0.03);
    EXPECT_LT(amplitude_at(sound, 440), 0.003);
}

TEST(Voice, ModulationAddsUnlessItsAmountIsAtTheTop) {
    // Resonance as a source is constant, so its effect on the pitch of nothing is exact: an LFO of
    // type none is 0, which an adding slot ignores and a multiplying slot turns into silence.
    const auto level = [](int amount) {
        EngineHost host;
        host.set_plain(0, OSC_SINE);
        host.set(0, CTRL_LFO1_TYPE, OSC_NONE);
        host.set(0, CTRL_AMPLITUDE_INFLUENCE_SOURCE, INFL_LFO1);
        host.set(0, CTRL_AMPLITUDE_INFLUENCE_AMOUNT, amount);
        return amplitude_at(play(host, 69), 440);
    };
    EXPECT_GT(level(126), 0.05);
    EXPECT_LT(level(127), 1e-6);
}

TEST(Voice, EnvelopeSweepsTheCutoff) {
    const auto brightness = [](int amount) {
        EngineHost host;
        host.set_plain(0, OSC_SAW);
        host.set(0, CTRL_FILTER1_TYPE, FILTER_LOWPASS);
        host.set(0, CTRL_FILTER1_DEPTH, 2);
        host.set(0, CTRL_FILTER1_CUTOFF, 51); // 20 Hz * 2^4
        host.set(0, CTRL_ENV2_SUSTAIN, 127);
        host.set(0, CTRL_CUTOFF1_INFLUENCE1_SOURCE, INFL_ENV2);
        host.set(0, CTRL_CUTOFF1_INFLUENCE1_AMOUNT, amount);
        return amplitude_at(play(host, 45), 2200);
    };
    EXPECT_GT(brightness(126), 50 * brightness(64));
}

TEST(Voice, VelocityScalesTheAmplitude) {
    EngineHost loud;
    loud.set_plain(0, OSC_SINE);
    EngineHost soft;
    soft.set_plain(0, OSC_SINE);
    EXPECT_NEAR(amplitude_at(play(soft, 69, 32), 440) / amplitude_at(play(loud, 69, 127), 440),
                32.0 / 127, 1e-3);
}

TEST(Voice, TakesNothingFromAnotherVoicesScratch) {
    // A note that starts inside a block, modulated by an oscillator and an LFO, sounds the same
    // whatever has been rendered into the shared scratch before.
    const auto play_after = [](bool other_first) {
        EngineHost host;
        if (other_first) {
            host.note_on(1, 40);
            host.set(1, CTRL_MAIN_VOLUME, 0);
            host.set(1, CTRL_FILTER1_TYPE, FILTER_LADDER_START_MARKER);
            host.render(512);
        }
        EngineHost fresh;
        fresh.set_plain(0, OSC_SINE);
        fresh.set(0, CTRL_OSC2_INFLUENCE_SOURCE, INFL_OSC1);
        fresh.set(0, CTRL_OSC2_INFLUENCE_AMOUNT, 90);
        fresh.set(0, CTRL_OSC1_OSC2_MIX, 127);
        fresh.set(0, CTRL_RESONANCE1_INFLUENCE_SOURCE, INFL_LFO2);
        fresh.set(0, CTRL_RESONANCE1_INFLUENCE_AMOUNT, 100);
        fresh.set(0, CTRL_CUTOFF1_INFLUENCE1_SOURCE, INFL_OSC2);
        fresh.set(0, CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 80);
        fresh.set(0, CTRL_FILTER1_TYPE, FILTER_LOWPASS);
        fresh.set(0, CTRL_FILTER1_DEPTH, 1);
        fresh.note_on(0, 69, 127, 101);
        return fresh.render(1024);
    };
    EXPECT_EQ(play_after(false), play_after(true));
}

} // namespace

} // namespace tarquil
