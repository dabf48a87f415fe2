// General MIDI as a player sounds it: levels, places, pitches and clicks, against the laws.

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

double decibels(double gain) {
    return 20.0 * std::log10(gain);
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

    // The next frames, left and right.
    void record(double seconds) {
        left.clear();
        right.clear();
        float pcm[2 * QuantumStream::QUANTUM];
        while (double(left.size()) < seconds * RATE) {
            player->audio().run(pcm, QuantumStream::QUANTUM);
            for (uint32_t i = 0; i < QuantumStream::QUANTUM; i++) {
                left.push_back(pcm[2 * i]);
                right.push_back(pcm[2 * i + 1]);
            }
        }
    }

    static double rms(const std::vector<double>& sound) {
        double sum = 0.0;
        for (const double value : sound)
            sum += value * value;
        return std::sqrt(sum / double(sound.size()));
    }

    // The level of channel 1's key 69 with these settings, after it has settled.
    double level(uint8_t volume, uint8_t expression, uint8_t velocity) {
        send({0xB0, 7, volume});
        send({0xB0, 11, expression});
        send({0x90, 69, velocity});
        record(0.1);
        record(0.1);
        const double sounding = rms(left);
        send({0xB0, 120, 0});
        record(0.1);
        return sounding;
    }

    // In Hz, from the phase's advance between two windows.
    double pitch(double near_hz) {
        constexpr size_t WINDOW = 8192;
        record(0.05);
        record(0.6);
        const auto phase_at = [&](size_t start) {
            double re = 0.0;
            double im = 0.0;
            for (size_t i = 0; i < WINDOW; i++) {
                const double window = 0.5 - 0.5 * std::cos(2 * PI * double(i) / WINDOW);
                const double angle = 2 * PI * near_hz * double(start + i) / RATE;
                re += window * left[start + i] * std::cos(angle);
                im -= window * left[start + i] * std::sin(angle);
            }
            return std::atan2(im, re);
        };
        constexpr size_t STEP = 2000;
        const double turn = std::remainder(phase_at(STEP) - phase_at(0), 2 * PI);
        return near_hz + turn / (2 * PI) * RATE / STEP;
    }

    TarqSettings melodic;
    std::shared_ptr<GmSet> set = std::make_shared<GmSet>();
    std::unique_ptr<Player> player;
    std::vector<double> left;
    std::vector<double> right;
};

TEST_F(GeneralMidi, LevelsFollowFortyLog) {
    start();
    const double full = level(127, 127, 120);
    for (const int volume : {100, 64, 40, 20, 10})
        EXPECT_NEAR(decibels(level(uint8_t(volume), 127, 120) / full),
                    40 * std::log10(volume / 127.0), 0.2)
            << volume;
    EXPECT_NEAR(decibels(level(100, 64, 120) / full), 40 * std::log10(100.0 * 64 / 127 / 127), 0.2);
    for (const int velocity : {100, 64, 52}) // below, the engine's velocity has few steps
        EXPECT_NEAR(decibels(level(127, 127, uint8_t(velocity)) / full),
                    40 * std::log10(velocity / 120.0), 0.2)
            << velocity;
    EXPECT_LT(level(0, 127, 127), 1e-9);
}

TEST_F(GeneralMidi, PanningHasEqualPower) {
    start();
    send({0x90, 69, 100});
    for (const int pan : {1, 32, 64, 90, 127}) {
        send({0xB0, 10, uint8_t(pan)});
        record(0.05);
        record(0.1);
        const double angle = PI / 2 * (pan - 1) / 126.0;
        const double measured = std::atan2(rms(right), rms(left));
        EXPECT_NEAR(measured, angle, 0.005) << pan;
    }
}

TEST_F(GeneralMidi, PitchesAreWithinACent) {
    start();
    const auto cents = [](double hz, double wanted) { return 1200 * std::log2(hz / wanted); };
    send({0x90, 69, 100});
    EXPECT_NEAR(cents(pitch(440.0), 440.0), 0.0, 0.5);
    send({0xE0, 0, 96}); // half up, of two semitones
    EXPECT_NEAR(cents(pitch(466.0), 440.0 * std::exp2(1 / 12.0)), 0.0, 0.5);
    for (const auto& [number, value] : {std::pair(101, 0), {100, 0}, {6, 12}})
        send({0xB0, uint8_t(number), uint8_t(value)});
    EXPECT_NEAR(cents(pitch(622.0), 440.0 * std::sqrt(2.0)), 0.0, 0.5);
    send({0xE0, 0, 64});
    for (const auto& [number, value] : {std::pair(100, 1), {6, 48}})
        send({0xB0, uint8_t(number), uint8_t(value)});
    EXPECT_NEAR(cents(pitch(440.0), 440.0 * std::exp2(-0.25 / 12)), 0.0, 0.5);
}

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
