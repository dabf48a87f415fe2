// What the parameters call without effect changes no sound.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/host_parameters.h"
#include "softsynth/parameters/influence.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

// A program and globals with about half of everything switched off, the rest at random.
ControllerBytes random_sound(std::minstd_rand& random) {
    const auto is_true = [&] { return random() % 2 == 0; };
    ControllerBytes bytes = default_controller_bytes();
    for (const ControllerInfo& info : controller_rows()) {
        const unsigned count = unsigned(info.choices.last) - info.choices.first + 1;
        if (is_true())
            bytes[info.number] = uint8_t(info.choices.first + random() % count);
    }
    // What is rare otherwise, and what switches things off.
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++)
        if (is_true())
            bytes[modulation_rows(slot).amount] = MULTIPLYING_AMOUNT;
    if (is_true())
        bytes[modulation_rows(AMPLITUDE_SLOT).source] = INFL_RESONANCE;
    const uint8_t mixes[] = {0, 64, 127};
    bytes[CTRL_OSC1_OSC2_MIX] = mixes[random() % 3];
    if (is_true())
        bytes[CTRL_OSC3_VOLUME] = 0;
    if (is_true())
        bytes[CTRL_OSC1_RANDOMIZE_PHASE] = 0;
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++)
        bytes[oscillator_rows(i).copies] = uint8_t(random() % 2);
    // Something must be heard.
    bytes[CTRL_MAIN_VOLUME] = 127;
    bytes[CTRL_ENV1_ATTACK] = 0;
    bytes[CTRL_ENV1_SUSTAIN] = 127;
    for (unsigned band = 0; band < NUM_COMPRESSOR_BANDS; band++)
        bytes[compressor_band_rows(band).makeup] = 80;
    return bytes;
}

std::vector<float> sound_of(const ControllerBytes& bytes) {
    EngineHost host;
    for (const ControllerInfo& info : controller_rows()) {
        if (is_automatable_controller(info.number))
            host.set(0, info.number, bytes[info.number]);
    }
    host.render(4);
    host.note_on(0, 57, 100);
    host.note_on(0, 64, 60);
    return host.render(2048, MAX_NUM_SAMPLES);
}

TEST(WithoutEffect, NotOneBitOfTheSound) {
    constexpr int NUM_SOUNDS = 32;
    int num_unused = 0;
    int num_heard = 0;
    for (unsigned seed = 1; seed <= NUM_SOUNDS; seed++) {
        std::minstd_rand random(seed);
        const ControllerBytes bytes = random_sound(random);
        const std::vector<float> sound = sound_of(bytes);
        num_heard += peak(sound) > 1e-3F ? 1 : 0;
        for (const ControllerInfo& info : controller_rows()) {
            if (meaning_of(info.number, bytes).is_used)
                continue;
            num_unused++;
            ControllerBytes changed = bytes;
            const int other = bytes[info.number] > 63 ? 20 : 100;
            changed[info.number] = uint8_t(filter_controller(info.number, other));
            EXPECT_TRUE(sound_of(changed) == sound) << "seed " << seed << ", " << info.key;
        }
    }
    EXPECT_GT(num_unused, 30 * NUM_SOUNDS);
    EXPECT_GT(num_heard, NUM_SOUNDS / 3);
}

} // namespace

} // namespace tarquil
