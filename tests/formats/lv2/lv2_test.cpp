#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "formats/lv2/lv2_names.h"
#include "player/hosted_player.h"
#include "sounds/shipped_sounds.h"
#include "tests/formats/lv2/lv2_host.h"
#include "tests/temp_directory.h"

namespace tarquil {
namespace {

constexpr double RATE = 48000;

// The byte of a saved controller.
int saved_byte(Lv2Host& host, unsigned number) {
    HostedPlayer player;
    EXPECT_EQ(player.load_state(host.saved_text().c_str()), 0);
    return player.player().get_controller(number);
}

float peak(const std::vector<float>& samples, size_t start = 0) {
    float highest = 0;
    for (size_t i = start; i < samples.size(); i++)
        highest = std::max(highest, std::abs(samples[i]));
    return highest;
}

TEST(Lv2, PlaysAsThePlayerDoesInBlocksOfAnyLength) {
    HostedPlayer player;
    ASSERT_TRUE(player.activate(RATE));
    constexpr uint32_t FRAMES = 20000;
    std::vector<float> left(FRAMES);
    std::vector<float> right(FRAMES);
    player.begin_block(left.data(), right.data(), FRAMES);
    player.set_controller(CTRL_FILTER1_CUTOFF, 50, 0);
    for (uint32_t i = 0; i < 100; i++) {
        const uint8_t note[] = {uint8_t(0x90 | i % 16), uint8_t(40 + i % 40), 100};
        player.add_message(note, i * 100 + 7);
    }
    player.end_block();
    ASSERT_GT(peak(left), 0.01F);

    for (const uint32_t block : {20000U, 1U, 64U, 333U}) {
        Lv2Host host(RATE);
        ASSERT_TRUE(host.is_loaded());
        host.control(CTRL_FILTER1_CUTOFF) =
            lv2_controls()[lv2_port_of(CTRL_FILTER1_CUTOFF) - NUM_FIXED_LV2_PORTS].value(50);
        uint32_t next = 0;
        for (uint32_t start = 0; start < FRAMES; start += block) {
            const uint32_t frames = std::min(block, FRAMES - start);
            for (; next < 100 && next * 100 + 7 < start + frames; next++)
                host.add_midi(next * 100 + 7 - start,
                              {uint8_t(0x90 | next % 16), uint8_t(40 + next % 40), 100});
            host.run(frames);
        }
        EXPECT_EQ(host.left, left) << block;
        EXPECT_EQ(host.right, right) << block;
        EXPECT_EQ(host.latency(), float(player.latency_frames()));
    }
}

TEST(Lv2, PortsAreTakenWhenTheyChangeAndNeverOverwriteARestoredState) {
    Lv2Host host(RATE);
    host.run(64);
    EXPECT_EQ(saved_byte(host, CTRL_PANNING), 64);
    host.control(CTRL_PANNING) = 0.25F;
    host.run(64);
    EXPECT_EQ(saved_byte(host, CTRL_PANNING), 32);
    const std::string state = host.save();

    // The ports as a host leaves them that restores the state alone, and all of it.
    Lv2Host other(RATE);
    other.control(CTRL_PANNING) = 1.0F;
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 127);
    EXPECT_EQ(other.restore_text(host.saved_text()), LV2_STATE_SUCCESS);
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 32);
    other.restore(state);
    EXPECT_EQ(other.control(CTRL_PANNING), 0.25F);
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 32);
    other.control(CTRL_PANNING) = 0.504F;
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 64);

    other.control(CTRL_PANNING) = std::numeric_limits<float>::quiet_NaN();
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 64);
    other.control(CTRL_PANNING) = std::numeric_limits<float>::infinity();
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 127);
}

TEST(Lv2, GarbageStatesChangeNothing) {
    Lv2Host host(RATE);
    host.control(CTRL_PANNING) = 0.25F;
    host.run(64);
    const std::string before = host.saved_text();
    for (const std::string& text : {std::string(), std::string("no state"), std::string(100, '\0'),
                                    std::string("\xFF\xFE = 5\n"), before.substr(0, 3)})
        EXPECT_NE(host.restore_text(text), LV2_STATE_SUCCESS) << text;
    host.run(64);
    EXPECT_EQ(host.saved_text(), before);
}

TEST(Lv2, EventsOfEveryKindAndNumber) {
    Lv2Host host(RATE);
    host.add_midi(-5, {0x90, 60, 100});
    host.add_midi(0, {0x90});
    host.add_midi(10, {0xF0, 0x7E, 0x7F, 0x09, 0x01, 0xF7});
    host.add_midi(10, {});
    host.add_midi(10, {0xC3, 5});
    host.add_midi(99999, {0x80, 60, 0});
    host.run(512);
    for (int i = 0; i < 5000; i++)
        host.add_midi(i / 20, {uint8_t(i % 2 == 0 ? 0x91 : 0x81), uint8_t(i / 2 % 128), 100});
    host.run(256);
    host.run(96000);
    EXPECT_GT(peak(host.left), 0.01F);
    EXPECT_EQ(peak(host.left, host.left.size() - 4800), 0) << "a note hangs";
}

TEST(Lv2, ProgramsByMessage) {
    Lv2Host host(RATE);
    host.add_program(0, 200);
    host.add_program(0, -1);
    host.run(64);
    EXPECT_EQ(host.told_program(), -1);
    host.add_program(0, 77);
    host.run(64);
    EXPECT_EQ(host.told_program(), 77);
    EXPECT_GT(host.told_changes(), 0);
    HostedPlayer player;
    EXPECT_EQ(player.load_state(host.saved_text().c_str()), 0);
    EXPECT_EQ(player.player().edited_program(), 77U);
    EXPECT_EQ(player.player().channel_program(0), 77U);
}

TEST(Lv2, FilesAreLoadedBesideTheSound) {
    const TempDirectory folder;
    const std::string path = folder.path() + "/wide.tqi";
    std::ofstream(path) << "name = wide\npanning = 0.25\n";
    Lv2Host host(RATE);
    host.add_file(folder.path() + "/missing.tqi");
    host.run(64);
    EXPECT_EQ(saved_byte(host, CTRL_PANNING), 64);
    host.add_file(path);
    host.run(64);
    EXPECT_EQ(saved_byte(host, CTRL_PANNING), 32);
    HostedPlayer player;
    EXPECT_EQ(player.load_state(host.saved_text().c_str()), 0);
    EXPECT_EQ(player.player().program_name(0), "wide");
}

TEST(Lv2, PresetsAreTheShippedSounds) {
    const std::pair<std::string, const TarqSettings*> banks[] = {
        {"gm", &shipped_gm_bank()}, {"originals", &shipped_originals()}};
    Lv2Host host(RATE);
    for (const auto& [symbol, bank] : banks) {
        for (const unsigned number : {0U, 64U, 127U}) {
            const std::string name = TARQUIL_LV2_PREFIX + symbol + "_" + std::to_string(number);
            ASSERT_TRUE(host.restore_preset(name.c_str())) << name;
            HostedPlayer player;
            EXPECT_EQ(player.load_state(host.saved_text().c_str()), 0);
            const Instrument& wanted = bank->get_instrument(number);
            EXPECT_EQ(player.player().get_instrument(0).save_to_string(), wanted.save_to_string());
        }
    }
    EXPECT_FALSE(host.restore_preset(TARQUIL_LV2_PREFIX "gm_128"));
}

TEST(Lv2, RatesBeyondReasonAreRefused) {
    EXPECT_FALSE(Lv2Host(0).is_loaded());
    EXPECT_FALSE(Lv2Host(1e9).is_loaded());
    for (const double rate : {8000.0, 44100.0, 96000.0, 384000.0})
        EXPECT_TRUE(Lv2Host(rate).is_loaded()) << rate;
}

TEST(Lv2, RatesBlocksAndActivationsAtRandomGiveSound) {
    const uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    for (int instance = 0; instance < 5; instance++) {
        const double rates[] = {8000, 12345.678, 44100, 47999, 96000, 384000};
        Lv2Host host(rates[random() % std::size(rates)]);
        ASSERT_TRUE(host.is_loaded());
        for (int round = 0; round < 8; round++) {
            for (unsigned i = 0; i < random() % 30; i++)
                host.add_midi(int64_t(random() % 2000), {uint8_t(0x80 + random() % 0x80),
                                                         uint8_t(random()), uint8_t(random())});
            host.run(uint32_t(random() % 2000));
            if (random() % 2 == 0) {
                lilv_instance_deactivate(host.get_instance());
                lilv_instance_activate(host.get_instance());
            }
        }
        EXPECT_LE(peak(host.left), 2.0F) << "seed " << seed;
        lilv_instance_deactivate(host.get_instance());
        lilv_instance_activate(host.get_instance());
        host.left.clear();
        host.right.clear();
        host.run(96000);
        host.run(96000);
        EXPECT_LT(peak(host.left, 96000), 1e-4F) << "a note of before the activation, " << seed;
    }
}

} // namespace
} // namespace tarquil
