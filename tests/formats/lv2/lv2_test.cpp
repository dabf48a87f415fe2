#include <fstream>
#include <limits>

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
    EXPECT_EQ(player.load_state(host.save()), 0);
    return player.player().get_controller(number);
}

TEST(Lv2, PortsAreTakenWhenTheyChangeAndNeverOverwriteARestoredState) {
    Lv2Host host(RATE);
    host.run(64);
    EXPECT_EQ(saved_byte(host, CTRL_PANNING), 64);
    host.control(CTRL_PANNING) = 0.25F;
    host.run(64);
    EXPECT_EQ(saved_byte(host, CTRL_PANNING), 32);

    // The ports as a host leaves them that restores the state alone, and all of it.
    Lv2Host other(RATE);
    other.control(CTRL_PANNING) = 1.0F;
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 127);
    EXPECT_TRUE(other.load(host.save()));
    other.run(64);
    EXPECT_EQ(saved_byte(other, CTRL_PANNING), 32);
    EXPECT_TRUE(other.load(host.save()));
    other.control(CTRL_PANNING) = 0.25F;
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
    EXPECT_EQ(player.load_state(host.save()), 0);
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
    EXPECT_EQ(player.load_state(host.save()), 0);
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
            EXPECT_EQ(player.load_state(host.save()), 0);
            const Instrument& wanted = bank->get_instrument(number);
            EXPECT_EQ(player.player().get_instrument(0).save_to_string(), wanted.save_to_string());
        }
    }
    EXPECT_FALSE(host.restore_preset(TARQUIL_LV2_PREFIX "gm_128"));
}

TEST(Lv2Tempo, WhatAPositionDoesNotSayStaysAndNonsenseIsNotTaken) {
    constexpr double NONE = std::numeric_limits<double>::quiet_NaN();
    const auto sound = [&](const std::vector<Lv2Position>& told) {
        Lv2Host host(44100, following_state());
        host.add_midi(0, {0x90, 60, 100});
        for (const Lv2Position& position : told)
            host.add_position(0, position);
        return host.run(30000).left;
    };
    const Lv2Position first{150.0, 1, 2.0, 4.0, 4, 1.0};
    const std::vector<float> wanted = sound({first});
    EXPECT_EQ(sound({first, {NONE, 1, NONE, NONE, 4, NONE}}), wanted);
    EXPECT_EQ(sound({first, {1e30, 1, 2.0, 4.0, 4, 1.0}}), wanted);
    EXPECT_EQ(sound({first, {150.0, 1, 2.0, 4.0, 0, 1.0}}), wanted); // beats of no length
    EXPECT_NE(sound({first, {170.0, 1, NONE, NONE, 4, NONE}}), wanted);
}

} // namespace
} // namespace tarquil
