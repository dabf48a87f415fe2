// General MIDI as a player sounds it: clicks, spurs, drums and the ceiling; the laws themselves are
// in tests/midi/gm.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "midi/gm/gm_map_file.h"
#include "player/player.h"
#include "player/quantum_stream.h"

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
        player = std::make_unique<Player>();
        player->set_bank(melodic);
        player->set_gm_set(set);
        player->set_dialect(MidiDialect::GENERAL_MIDI);
        player->start();
        for (unsigned channel = 0; channel < 16; channel++)
            send({uint8_t(0xB0U | channel), 91, 0});
    }

    void send(std::initializer_list<uint8_t> message) {
        uint8_t bytes[3] = {};
        std::copy(message.begin(), message.end(), bytes);
        player->audio().follow_edits();
        ASSERT_TRUE(player->audio().add_message(bytes, player->audio().time()));
    }

    // The next frames, left.
    void record(double seconds) {
        left.clear();
        float pcm[2 * QuantumStream::QUANTUM];
        while (double(left.size()) < seconds * RATE) {
            player->audio().run(pcm, QuantumStream::QUANTUM);
            for (uint32_t i = 0; i < QuantumStream::QUANTUM; i++)
                left.push_back(pcm[2 * i]);
        }
    }

    static double rms(const std::vector<double>& sound) {
        double sum = 0.0;
        for (const double value : sound)
            sum += value * value;
        return std::sqrt(sum / double(sound.size()));
    }

    TarqSettings melodic;
    std::shared_ptr<GmSet> set = std::make_shared<GmSet>();
    std::unique_ptr<Player> player;
    std::vector<double> left;
};

double energy_of(const std::vector<double>& sound) {
    double sum = 0.0;
    for (const double value : sound)
        sum += value * value;
    return sum;
}

// Energy above `hz` of the middle of a sound.
double energy_above(const std::vector<double>& sound, double hz) {
    const size_t size = sound.size();
    double above = 0.0;
    std::vector<double> windowed(size);
    for (size_t i = 0; i < size; i++)
        windowed[i] = sound[i] * (0.5 - 0.5 * std::cos(2 * PI * double(i) / double(size)));
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

TEST_F(GeneralMidi, AJumpOfTheVolumeDoesNotClick) {
    start();
    send({0x90, 69, 100});
    double clicks = 0.0;
    double step_clicks = 0.0;
    for (int phase = 0; phase < 4; phase++) { // a quarter of a wave apart
        send({0xB0, 7, 100});
        record(0.2);
        record(0.1);
        std::vector<double> sound = left;
        const double second = energy_of(left) / double(left.size()) * RATE;
        send({0xB0, 7, 40});
        record(0.1);
        sound.insert(sound.end(), left.begin(), left.end());
        // The same jump within one sample, for comparison.
        std::vector<double> step = sound;
        const double ratio = rms(left) * std::sqrt(double(RATE) / second);
        for (size_t i = 0; i < step.size() / 2; i++)
            step[step.size() / 2 + i] = step[i] * ratio;
        clicks += energy_above(sound, 1500.0) / second;
        step_clicks += energy_above(step, 1500.0) / second;
    }
    const double click = 10 * std::log10(clicks / 4);
    const double step_click = 10 * std::log10(step_clicks / 4);
    RecordProperty("click_db", std::to_string(click));
    RecordProperty("step_db", std::to_string(step_click));
    EXPECT_LT(click, -60.0); // below a second of the tone
    EXPECT_LT(click, step_click - 15.0);
}

TEST_F(GeneralMidi, SoundOffEndsWithinFiveMillisecondsWithoutAClick) {
    start();
    send({0x90, 69, 100});
    record(0.2);
    record(0.1);
    std::vector<double> sound = left;
    const double second = energy_of(left) / double(left.size()) * RATE;
    send({0xB0, 120, 0});
    send({0xC0, 5}); // what comes next may change everything but what fades
    record(0.1);
    sound.insert(sound.end(), left.begin(), left.end());
    EXPECT_LT(10 * std::log10(energy_above(sound, 1500.0) / second), -60.0);
    const auto silent_from = left.begin() + QuantumStream::QUANTUM + RATE / 200;
    const std::vector<double> tail(silent_from,
                                   left.end()); // less what the master's filters ring on
    EXPECT_LT(10 * std::log10(energy_above(tail, 300.0) / second), -60.0);
}

TEST_F(GeneralMidi, VibratoHasNoOtherSidebandsThanItsOwn) {
    start();
    send({0x90, 69, 100});
    send({0xB0, 1, 127});
    record(0.3);
    record(0.5);
    const double spurs = 10 * std::log10(energy_above(left, 700.0) / energy_above(left, 0.0));
    RecordProperty("spurs_db", std::to_string(spurs));
    EXPECT_LT(spurs, -60.0);
}

TEST_F(GeneralMidi, DrumsSoundOnTheSecondEngineAndCostNothingBefore) {
    ASSERT_EQ(load_gm_map_from_string(set->map, "family = kick\nk00_036 = kick 1 60 100 64 100\n"),
              "");
    start();
    record(0.1);
    EXPECT_EQ(rms(left), 0.0);
    send({0x99, 36, 100});
    record(0.1);
    EXPECT_GT(rms(left), 0.01);
    record(3.0);
    record(0.1);
    EXPECT_EQ(rms(left), 0.0);
    send({0x99, 36, 100}); // and again after the engine stood still
    record(0.1);
    EXPECT_GT(rms(left), 0.01);
}

TEST_F(GeneralMidi, ManyLoudNotesStayBelowTheCeiling) {
    start();
    for (uint8_t channel = 0; channel < 8; channel++) {
        send({uint8_t(0xB0U | channel), 7, 127});
        for (uint8_t i = 0; i < 4; i++)
            send({uint8_t(0x90U | channel), uint8_t(40 + 7 * i + channel), 127});
    }
    record(0.5);
    double peak = 0.0;
    for (const double value : left)
        peak = std::max(peak, std::fabs(value));
    EXPECT_LE(peak, double(Limiter::CEILING));
    EXPECT_GT(peak, 0.8);
}

} // namespace
} // namespace tarquil
