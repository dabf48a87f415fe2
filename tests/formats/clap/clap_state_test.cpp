// Tests of the CLAP plug-in's state: whole in any pieces, or refused with nothing changed.

#include <gtest/gtest.h>

#include "tests/formats/clap/clap_host.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

void change_much(ClapTestHost& host) {
    std::mt19937 random(3);
    for (int program = 0; program < 128; program += 9) {
        host.set(0x1010, program);
        for (const unsigned number :
             {CTRL_PANNING, CTRL_CHAN_FILTER1_CUTOFF, CTRL_OSC1_TYPE, CTRL_ENV1_ATTACK})
            host.set(number, double(random() % 128));
    }
    for (clap_id channel = 0; channel < 16; channel++)
        host.set(0x1000 + channel, double(random() % 128));
    host.flush();
}

TEST(ClapState, ComesBackWholeInPiecesOfAnySize) {
    ClapTestHost host;
    change_much(host);
    const std::string whole = host.save(size_t(1) << 30U);
    ASSERT_GT(whole.size(), 1000U);
    for (const size_t piece : {size_t(1), size_t(7), size_t(4096)}) {
        EXPECT_EQ(host.save(piece), whole) << piece;
        ClapTestHost second;
        ASSERT_TRUE(second.load(whole, piece)) << piece;
        EXPECT_EQ(second.save(), whole) << piece;
        EXPECT_EQ(second.rescanned, unsigned(CLAP_PARAM_RESCAN_VALUES | CLAP_PARAM_RESCAN_TEXT));
        for (uint32_t i = 0; i < second.params().count(second.plugin); i++) {
            clap_param_info info;
            second.params().get_info(second.plugin, i, &info);
            EXPECT_EQ(second.value(info.id), host.value(info.id)) << info.name;
        }
    }
}

TEST(ClapState, SoundsAsItDidWhenItWasSaved) {
    ClapTestHost host;
    change_much(host);
    const std::string state = host.save();
    ASSERT_TRUE(host.load(state));
    ASSERT_TRUE(host.activate(48000));
    const StereoSound sound =
        render_song(song_blocks(480, false),
                    [&](const auto& messages, float* left, float* right, uint32_t frames) {
                        for (const SongMessage& message : messages)
                            host.midi(message.bytes, message.frame);
                        host.process(left, right, frames);
                    });
    EXPECT_EQ(sound.hash(), hosted_song(48000, {SONG_FRAMES}, state).hash());
    EXPECT_NE(sound.hash(), hosted_song(48000, {SONG_FRAMES}).hash());
}

TEST(ClapState, WhatIsNoneIsRefusedAndChangesNothing) {
    ClapTestHost host;
    change_much(host);
    const std::string before = host.save();
    EXPECT_FALSE(host.load(""));
    EXPECT_FALSE(host.load("\n\n"));
    EXPECT_FALSE(host.load("state_version = 99\n"));
    EXPECT_FALSE(host.load("a state of another plug-in"));
    std::mt19937 random(5);
    for (int round = 0; round < 20; round++) {
        std::string garbage(random() % 5000, '\0');
        for (char& byte : garbage)
            byte = char(random());
        EXPECT_FALSE(host.load(garbage)) << round;
    }
    EXPECT_EQ(host.rescanned, 0U);
    EXPECT_EQ(host.save(), before);
}

TEST(ClapState, AStreamThatFailsFailsTheWhole) {
    ClapTestHost host;
    const auto& state = host.get<clap_plugin_state>(CLAP_EXT_STATE);
    const clap_istream bad_in = {
        .ctx = nullptr, .read = [](const clap_istream*, void*, uint64_t) { return int64_t(-1); }};
    EXPECT_FALSE(state.load(host.plugin, &bad_in));
    const clap_istream lying = {
        .ctx = nullptr,
        .read = [](const clap_istream*, void*, uint64_t size) { return int64_t(size) + 1; }};
    EXPECT_FALSE(state.load(host.plugin, &lying));
    for (const int64_t answer : {int64_t(-1), int64_t(0), int64_t(1) << 40U}) {
        int64_t result = answer;
        const clap_ostream bad_out = {
            .ctx = &result, .write = [](const clap_ostream* stream, const void*, uint64_t) {
                return *static_cast<int64_t*>(stream->ctx);
            }};
        EXPECT_FALSE(state.save(host.plugin, &bad_out)) << answer;
    }
    EXPECT_FALSE(state.load(host.plugin, nullptr));
    EXPECT_FALSE(state.save(host.plugin, nullptr));
}

} // namespace

} // namespace tarquil
