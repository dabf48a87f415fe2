// Every program of the General MIDI set, played: it sounds in its range, in tune, and ends.

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

#include "tests/sounds/set_player.h"

namespace tarquil {
namespace {

constexpr unsigned FAMILY_SIZE = 8;

struct Family {
    const char* name;
    unsigned low; // keys that its instruments have in common
    unsigned high;
    bool is_pitched;
};

constexpr Family FAMILIES[] = {
    {"piano", 36, 84, true},         {"chromatic", 60, 84, true}, {"organ", 48, 84, true},
    {"guitar", 45, 76, true},        {"bass", 28, 52, true},      {"strings", 40, 69, true},
    {"ensemble", 48, 76, true},      {"brass", 48, 70, true},     {"reed", 55, 76, true},
    {"pipe", 67, 86, true},          {"lead", 48, 84, true},      {"pad", 48, 76, true},
    {"effects", 48, 76, false},      {"ethnic", 55, 76, true},    {"percussive", 48, 72, false},
    {"sound_effects", 48, 72, false}};

double power_at(const std::vector<float>& sound, double hertz) {
    std::complex<double> sum = 0.0;
    const double step = 2.0 * std::numbers::pi * hertz / SAMPLE_RATE;
    const std::complex<double> turn = std::polar(1.0, -step);
    std::complex<double> phasor = 1.0;
    for (size_t i = 0; i < sound.size(); i++) {
        const double place = 2.0 * std::numbers::pi * double(i) / double(sound.size());
        sum += phasor * (double(sound[i]) * (0.5 - 0.5 * std::cos(place)));
        phasor *= turn;
    }
    return std::norm(sum);
}

// How far off the key, in cents, the strongest of the first partials is.
double cents_off(const std::vector<float>& sound, unsigned key) {
    constexpr int RANGE = 60;
    constexpr int STEP = 3;
    const double base = 440.0 * std::exp2((double(key) - 69.0) / 12.0);
    double best = 0.0;
    int cents = 0;
    for (const int partial : {1, 2, 3, 4})
        for (int offset = -RANGE; offset <= RANGE; offset += STEP) {
            const double power = power_at(sound, partial * base * std::exp2(offset / 1200.0));
            if (power > best) {
                best = power;
                cents = offset;
            }
        }
    return cents;
}

class ShippedPrograms : public testing::TestWithParam<unsigned> {};

TEST_P(ShippedPrograms, SoundInTuneAndEnd) {
    const Family& family = FAMILIES[GetParam()];
    SetPlayer player;
    for (unsigned i = 0; i < FAMILY_SIZE; i++) {
        const unsigned program = GetParam() * FAMILY_SIZE + i;
        for (const unsigned key : {family.low, family.high}) {
            SCOPED_TRACE("program " + std::to_string(program) + ", key " + std::to_string(key));
            player.choose_program(program);
            const std::vector<float> held = player.play(0, key, 100, 0.8, 10.0);
            EXPECT_GT(peak(held), 0.003F);
            EXPECT_LT(peak(held), 1.0F);
            if (family.is_pitched) {
                constexpr double CENTS = 12.0; // the slow vibrato of an ensemble included
                EXPECT_NEAR(cents_off(held, key), 0.0, CENTS);
            }
        }
    }
}

// The power of a sound's loudest 150 ms, in dB.
double loudest(const std::vector<float>& sound) {
    constexpr size_t STEP = SAMPLE_RATE / 20;
    std::vector<double> steps;
    for (size_t start = 0; start + STEP <= sound.size(); start += STEP) {
        double sum = 0.0;
        for (size_t i = start; i < start + STEP; i++)
            sum += double(sound[i]) * double(sound[i]);
        steps.push_back(sum / STEP);
    }
    double most = 0.0;
    for (size_t i = 2; i < steps.size(); i++)
        most = std::max(most, (steps[i - 2] + steps[i - 1] + steps[i]) / 3.0);
    return 10.0 * std::log10(most + 1e-20);
}

// Of copies in random phases, other ones meet at each key.
bool has_random_copies(const Instrument& sound) {
    return sound.get_controller(CTRL_OSC1_RANDOMIZE_PHASE) != 0 &&
           (sound.get_controller(CTRL_OSC1_MULTI_COUNT) != 0 ||
            sound.get_controller(CTRL_OSC2_MULTI_COUNT) != 0 ||
            sound.get_controller(CTRL_OSC3_MULTI_COUNT) != 0);
}

TEST_P(ShippedPrograms, PlayTheirKeysAboutAlikeLoud) {
    constexpr double MOST = 12.0; // dB, which a bird's chirps come near
    constexpr unsigned STEP = 7;
    const Family& family = FAMILIES[GetParam()];
    SetPlayer player;
    for (unsigned i = 0; i < FAMILY_SIZE; i++) {
        const unsigned program = GetParam() * FAMILY_SIZE + i;
        if (has_random_copies(shipped_gm_bank().get_instrument(program)))
            continue;
        player.choose_program(program);
        double least = 0.0;
        double most = -200.0;
        for (unsigned key = family.low; key <= family.high; key += STEP) {
            player.note_on(0, key, 100);
            const double level = loudest(player.render(0.6));
            player.note_off(0, key);
            player.seconds_until_silent();
            least = std::min(least, level);
            most = std::max(most, level);
        }
        EXPECT_LT(most - least, MOST) << "program " << program;
    }
}

// A resonance that feeds itself fills the limiter; songs play keys beyond an instrument's own.
TEST_P(ShippedPrograms, RunAwayOnNoKey) {
    constexpr double MOST = -9.0; // dB
    SetPlayer player;
    for (unsigned i = 0; i < FAMILY_SIZE; i++) {
        const unsigned program = GetParam() * FAMILY_SIZE + i;
        player.choose_program(program);
        for (unsigned key = 16; key <= 108; key += 4) {
            player.note_on(0, key, 127);
            EXPECT_LT(loudest(player.render(0.4)), MOST)
                << "program " << program << ", key " << key;
            player.note_off(0, key);
        }
        player.seconds_until_silent();
    }
}

INSTANTIATE_TEST_SUITE_P(Families, ShippedPrograms, testing::Range(0U, 16U),
                         [](const auto& family) { return FAMILIES[family.param].name; });

} // namespace
} // namespace tarquil
