// General MIDI as a player sounds it: clicks, spurs, drums and the ceiling; the laws themselves are
// in tests/midi/gm.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "player/quantum_stream.h"
#include "tests/support/player_host.h"

namespace tarquil {
namespace {

constexpr uint32_t RATE = 44100;
constexpr double PI = std::numbers::pi;

// A sine without effects that holds its level at once.
void make_sine(Instrument& instrument) {
    instrument.set_controller(CTRL_OSC1_TYPE, 1);
    instrument.set_controller(CTRL_OSC1_FINE_TUNE, 64);
    instrument.set_controller(CTRL_ENV1_SUSTAIN, 127);
    instrument.set_controller(CTRL_ENV1_ATTACK, 4);
    instrument.set_controller(CTRL_MAIN_VOLUME, 90);
}

class GeneralMidi : public testing::Test {
  protected:
    GeneralMidi() {
        set->drums = std::make_unique<TarqSettings>();
        for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
            make_sine(melodic.get_instrument(i));
            make_sine(set->drums->get_instrument(i));
        }
    }

    // Dry, so that what is measured is the sound itself.
    void start() {
        PlayerHost& player = *host;
        player->set_bank(melodic);
        player->set_gm_set(set);
        player->set_dialect(MidiDialect::GENERAL_MIDI);
        player->start();
        for (unsigned channel = 0; channel < 16; channel++)
            player.midi(0xB0U | channel, 91, 0);
    }
    void midi(unsigned status, unsigned data1, unsigned data2 = 0) {
        host->midi(status, data1, data2);
    }
    // The next frames, left.
    std::vector<float> record(double seconds) {
        constexpr uint32_t QUANTUM = QuantumStream::QUANTUM;
        return side(host->render(uint32_t(std::ceil(seconds * RATE / QUANTUM)) * QUANTUM), 0);
    }

    TarqSettings melodic;
    std::shared_ptr<GmSet> set = std::make_shared<GmSet>();
    std::unique_ptr<PlayerHost> host = std::make_unique<PlayerHost>(false);
};

double energy_of(const std::vector<float>& sound) {
    double sum = 0.0;
    for (const float value : sound)
        sum += double(value) * double(value);
    return sum;
}

// Energy above `hz` of the middle of a sound.
double energy_above(const std::vector<float>& sound, double hz) {
    const size_t size = sound.size();
    double above = 0.0;
    std::vector<double> windowed(size);
    for (size_t i = 0; i < size; i++)
        windowed[i] = double(sound[i]) * (0.5 - 0.5 * std::cos(2 * PI * double(i) / double(size)));
    const auto first = size_t(std::ceil(hz * double(size) / RATE));
    // Every second bin: the window makes neighbours alike.
    for (size_t bin = first; bin < size / 2; bin += 2) {
        const double step = 2 * PI * double(bin) / double(size);
        double before = 0.0;
        double now = 0.0; // Goertzel
        for (const double value : windowed) {
            const double next = value + 2 * std::cos(step) * now - before;
            before = now;
            now = next;
        }
        above += 2 * 2 * (now * now + before * before - 2 * std::cos(step) * now * before);
    }
    return above / double(size);
}

// What is heard above a tone before and after a message, in dB below a second of the tone.
double click_db(const std::vector<float>& before, const std::vector<float>& after) {
    const double second = energy_of(before) / double(before.size()) * RATE;
    std::vector<float> sound = before;
    sound.insert(sound.end(), after.begin(), after.end());
    return 10 * std::log10(energy_above(sound, 1500.0) / second);
}

TEST_F(GeneralMidi, AJumpOfTheVolumeDoesNotClick) {
    start();
    midi(0x90, 69, 100);
    double clicks = 0.0;
    for (int phase = 0; phase < 4; phase++) { // a quarter of a wave apart
        midi(0xB0, 7, 100);
        record(0.2);
        const std::vector<float> loud = record(0.1);
        midi(0xB0, 7, 40);
        clicks += std::pow(10.0, click_db(loud, record(0.1)) / 10);
    }
    EXPECT_LT(10 * std::log10(clicks / 4), -61.7); // a step within one sample has -46.7
}

TEST_F(GeneralMidi, SoundOffEndsWithinFiveMillisecondsWithoutAClick) {
    start();
    midi(0x90, 69, 100);
    record(0.2);
    const std::vector<float> tone = record(0.1);
    midi(0xB0, 120, 0);
    midi(0xC0, 5); // what comes next may change everything but what fades
    const std::vector<float> end = record(0.1);
    EXPECT_LT(click_db(tone, end), -60.0);
    const std::vector<float> tail(end.begin() + QuantumStream::QUANTUM + RATE / 200, end.end());
    // Less what the master's filters ring on.
    const double second = energy_of(tone) / double(tone.size()) * RATE;
    EXPECT_LT(10 * std::log10(energy_above(tail, 300.0) / second), -60.0);
}

TEST_F(GeneralMidi, VibratoHasNoOtherSidebandsThanItsOwn) {
    start();
    midi(0x90, 69, 100);
    midi(0xB0, 1, 127);
    record(0.3);
    const std::vector<float> sound = record(0.5);
    EXPECT_LT(10 * std::log10(energy_above(sound, 700.0) / energy_above(sound, 0.0)), -60.0);
}

TEST_F(GeneralMidi, ALoudNoteIsTurnedDownAndNotClipped) {
    melodic.set_global_controller(CTRL_FCMPR_PRE_GAIN, 127); // 12 dB
    melodic.get_instrument(0).set_controller(CTRL_MAIN_VOLUME, 127);
    start();
    midi(0xB0, 7, 127);
    midi(0x90, 69, 127);
    record(0.2);
    const std::vector<float> sound = record(0.2);
    EXPECT_GT(energy_of(sound), 0.36 * double(sound.size()));
    EXPECT_LT(energy_above(sound, 660.0), 1e-4 * energy_of(sound));
}

TEST_F(GeneralMidi, ManyLoudNotesStayBelowTheCeiling) {
    start();
    for (unsigned channel = 0; channel < 8; channel++) {
        midi(0xB0U | channel, 7, 127);
        for (unsigned i = 0; i < 4; i++)
            midi(0x90U | channel, 40 + 7 * i + channel, 127);
    }
    const float highest = peak(record(0.5));
    EXPECT_LE(highest, float(Limiter::CEILING));
    EXPECT_GT(highest, 0.8F);
}

} // namespace
} // namespace tarquil
