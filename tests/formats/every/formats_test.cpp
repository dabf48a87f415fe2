// What every format has to do alike: play as the player does, whatever the host's rate, blocks and
// events; keep and take states.

#include <cmath>
#include <limits>
#include <random>

#include "tests/formats/common/tempo_song.h"
#include "tests/formats/every/every_format.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

using Formats = EveryFormat;
using FormatsAtAnyRate = EveryFormat;

// By the player, of what of the messages reaches the plug-in.
StereoSound played(const FormatDriver& plugin, double rate, const std::string& state) {
    return hosted_song(rate, {SONG_FRAMES}, state,
                       [&](const auto& messages) { return plugin.passed(messages); });
}

TEST_P(FormatsAtAnyRate, TheSongHasThePlayersBytesAtEveryRateAndBlockLength) {
    for (const double rate : {44100.0, 48000.0, 96000.0, 22050.0}) {
        for (const uint32_t longest : {1U, 64U, 900U}) {
            const auto plugin = start_at(rate);
            const uint64_t wanted = played(*plugin, rate, plain_state()).hash();
            EXPECT_EQ(play_song(*plugin, song_blocks(longest, longest == 900)).hash(), wanted)
                << rate << " Hz, blocks up to " << longest;
            HostedPlayer reference;
            EXPECT_TRUE(reference.activate(rate));
            EXPECT_EQ(plugin->latency_frames(), reference.latency_frames());
        }
    }
}

TEST_P(FormatsAtAnyRate, ParametersSoundFromTheirFrameOn) {
    constexpr uint32_t FRAMES = 4096;
    StereoSound last;
    for (const uint32_t frame : {0U, 1U, 1000U, 3003U}) {
        const auto plugin = start_at(48000);
        if (frame > 0 && !plugin->has_exact_parameters())
            break;
        HostedPlayer reference;
        ASSERT_TRUE(reference.activate(48000));
        const SongMessage note{0, {0x90, 60, 100}};
        StereoSound wanted{std::vector<float>(FRAMES), std::vector<float>(FRAMES)};
        for (int block = 0; block < 2; block++) {
            const auto begin = uint32_t(block) * FRAMES / 2;
            reference.begin_block(wanted.left.data() + begin, wanted.right.data() + begin,
                                  FRAMES / 2);
            if (block == 0) {
                reference.add_message(note.bytes, 0);
            } else {
                reference.set_controller(CTRL_MAIN_VOLUME, 20, frame % (FRAMES / 2));
                reference.set_controller(CTRL_PANNING, 3, frame % (FRAMES / 2));
            }
            reference.end_block();
        }
        StereoSound sound = wanted;
        plugin->add(note);
        plugin->run(sound.left.data(), sound.right.data(), FRAMES / 2);
        plugin->set(CTRL_MAIN_VOLUME, 20, frame % (FRAMES / 2));
        plugin->set(CTRL_PANNING, 3, frame % (FRAMES / 2));
        plugin->run(sound.left.data() + FRAMES / 2, sound.right.data() + FRAMES / 2, FRAMES / 2);
        EXPECT_TRUE(sound == wanted) << frame;
        EXPECT_FALSE(sound == last) << frame;
        last = sound;
        EXPECT_GT(peak({wanted.left.end() - 500, wanted.left.end()}),
                  peak({wanted.right.end() - 500, wanted.right.end()}))
            << "panned";
    }
}

TEST_P(FormatsAtAnyRate, ThousandsOfEventsInABlockAreAllPlayed) {
    constexpr uint32_t COUNT = 5000;
    const auto plugin = start_at(44100);
    HostedPlayer reference;
    ASSERT_TRUE(reference.activate(44100));
    std::vector<SongMessage> messages;
    for (uint32_t i = 0; i < COUNT; i++) {
        const unsigned status = i % 3 == 0 ? 0xE0 : i % 3 == 1 ? 0x90 : 0x80;
        messages.push_back({i, {uint8_t(status | i % 16), uint8_t(i / 3 % 128), uint8_t(90)}});
        plugin->add(messages.back());
    }
    StereoSound wanted{std::vector<float>(COUNT), std::vector<float>(COUNT)};
    render_block(reference, plugin->passed(messages), wanted.left.data(), wanted.right.data(),
                 COUNT);
    EXPECT_TRUE(plugin->run(COUNT) == wanted);
}

TEST_P(FormatsAtAnyRate, EventsInDisorderAndWithoutAMeaningLeaveNoNote) {
    const auto plugin = start_at(48000);
    for (uint32_t i = 0; i < 5000; i++) // most before the block's start, or behind its end
        plugin->add({1000 - i, {uint8_t(i % 2 == 0 ? 0x90 : 0x80), uint8_t(i / 2 % 128), 100}});
    plugin->add({0, {0x91, 60, 100}});
    EXPECT_TRUE(is_bounded(plugin->run(512)));
    EXPECT_GT(peak(plugin->run(512).left), 0.01F);
    plugin->add_specials();
    for (uint8_t key = 0; key < 128; key++) {
        for (const uint8_t status : {uint8_t(0x80), uint8_t(0x81)})
            plugin->add({INT32_MAX, {status, key, 0}});
    }
    EXPECT_TRUE(is_bounded(plugin->run(512)));
    plugin->run(96000);
    EXPECT_EQ(peak(plugin->run(4800).left), 0.0F) << "a note hangs";
}

TEST_P(FormatsAtAnyRate, RatesBlocksAndActivationsAtRandomGiveSoundThatEnds) {
    const uint32_t seed = std::random_device()();
    std::mt19937 random(seed);
    const auto plugin = start();
    for (const double rate : {0.0, -5.0, 1e9, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(plugin->activate(rate)) << rate;
    double rate = 0;
    for (int round = 0; round < 16; round++) {
        const double rates[] = {8000, 22050, 44100, 47999, 48000, 96000, 384000, 12345.678};
        rate = rates[random() % std::size(rates)];
        ASSERT_TRUE(plugin->activate(rate));
        for (int block = 0; block < 8; block++) {
            for (unsigned i = 0; i < random() % 30; i++)
                plugin->add(
                    {uint32_t(random() % 2000), // some beyond the block
                     {uint8_t(0x80 + random() % 0x80), uint8_t(random()), uint8_t(random())}});
            ASSERT_TRUE(is_bounded(plugin->run(uint32_t(random() % 2000)))) << "seed " << seed;
        }
        plugin->deactivate();
    }
    ASSERT_TRUE(plugin->activate(rate));
    plugin->run(uint32_t(2 * rate));
    EXPECT_LT(peak(plugin->run(4096).left), 1e-4F)
        << "a note of before the activation, seed " << seed;
    EXPECT_EQ(plugin->complaint(), "");
}

TEST_P(FormatsAtAnyRate, StatesComeBackWholeInPiecesOfAnySizeAndSoundAsTheyDid) {
    const auto plugin = start_at(rate());
    std::mt19937 random(3);
    for (const unsigned number :
         {CTRL_PANNING, CTRL_CHAN_FILTER1_CUTOFF, CTRL_OSC1_TYPE, CTRL_ENV1_ATTACK})
        plugin->set(number, number == CTRL_OSC1_TYPE ? 2 : int(random() % 128), 0);
    plugin->run(64);
    for (unsigned channel = 0; channel < 16; channel++)
        plugin->add({channel, {uint8_t(0xC0U | channel), uint8_t(random() % 128), 0}});
    plugin->run(64);
    const std::string whole = plugin->save();
    HostedPlayer read;
    ASSERT_EQ(read.load_state(whole), 0);
    EXPECT_EQ(read.save_state(), whole);
    EXPECT_NE(whole, plain_state());
    for (const size_t piece : {size_t(1), size_t(7), size_t(4096)}) {
        EXPECT_EQ(plugin->save(piece), whole) << piece;
        const auto other = start("");
        ASSERT_TRUE(other->load(whole, piece)) << piece;
        EXPECT_EQ(other->save(), whole) << piece;
        ASSERT_TRUE(other->activate(rate()));
        EXPECT_EQ(play_song(*other, song_blocks(480, false)).hash(),
                  played(*other, rate(), whole).hash());
    }
}

TEST_P(Formats, WhatIsNoStateIsRefusedAndChangesNothing) {
    const auto plugin = start_at(rate());
    plugin->set(CTRL_PANNING, 32, 0);
    plugin->run(64);
    const std::string before = plugin->save();
    std::vector<std::string> garbage = {"",
                                        "\n\n",
                                        "state_version = 99\n",
                                        "a state of another plug-in",
                                        before.substr(0, 5),
                                        std::string(100, '\0'),
                                        "\xFF\xFE = 5\n"};
    std::mt19937 random(5);
    for (int round = 0; round < 20; round++) {
        garbage.emplace_back(random() % 5000, '\0');
        for (char& byte : garbage.back())
            byte = char(random());
    }
    for (const std::string& text : garbage)
        EXPECT_FALSE(plugin->load(text)) << text;
    plugin->run(64);
    EXPECT_EQ(plugin->save(), before);
}

TEST_P(FormatsAtAnyRate, ASongFollowsTheHostsTempo) {
    for (const double rate : {44100.0, 48000.0}) {
        const auto song = [&](bool is_told) {
            const auto plugin = start_at(rate, following_state());
            return render_tempo_song(
                [&](uint32_t frame) {
                    if (is_told)
                        plugin->tell_tempo(frame, rate);
                },
                [&](const auto& messages, float* left, float* right, uint32_t frames) {
                    for (const SongMessage& message : messages)
                        plugin->add(message);
                    plugin->run(left, right, frames);
                });
        };
        const StereoSound followed = song(true);
        EXPECT_EQ(followed.hash(), hosted_tempo_song(rate).hash()) << rate;
        EXPECT_NE(followed.hash(), song(false).hash()) << rate;
    }
}

TEST_P(Formats, AStateThatComesLateSoundsAsOneThatTheInstanceHasHadBefore) {
    const std::string state = InstancePlayer().save_state();
    const auto first_notes = [&](const std::string& first, uint32_t frame) {
        const auto plugin = start_at(44100, first);
        plugin->run(1024);
        if (first != state) {
            EXPECT_TRUE(plugin->load(state));
        }
        for (uint8_t channel = 0; channel < 10; channel++) {
            plugin->add({frame, {uint8_t(0xC0U | channel), uint8_t(8 * channel), 0}});
            plugin->add({frame, {uint8_t(0x90U | channel), 60, 100}});
        }
        return plugin->run(1024);
    };
    for (const uint32_t frame : {1U, 20U, 63U}) {
        const StereoSound wanted = first_notes(state, frame);
        EXPECT_GT(peak(wanted.left), 0.001F);
        EXPECT_TRUE(first_notes(plain_state(), frame) == wanted) << frame;
    }
}

FOR_EVERY_FORMAT(Formats);
FOR_FORMATS_AT_ANY_RATE(FormatsAtAnyRate);

} // namespace

} // namespace tarquil
