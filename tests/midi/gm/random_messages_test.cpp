// Any messages: valid events only, bounded, the same at any cut of time, and nothing that hangs.

#include <gtest/gtest.h>

#include <random>

#include "midi/gm/gm_map_file.h"
#include "tests/midi/gm/engine_model.h"

namespace tarquil {
namespace {

using Random = std::mt19937;

struct TimedMessage {
    uint32_t time = 0;
    std::vector<uint8_t> bytes;
};

unsigned below(Random& random, unsigned limit) {
    return unsigned(random() % limit);
}

// Mostly channel messages with notes among them, some resets, some damage.
std::vector<uint8_t> any_message(Random& random) {
    const auto data = [&] { return uint8_t(below(random, 128)); };
    const unsigned kind = below(random, 100);
    if (kind < 35)
        return {uint8_t(0x90U | below(random, 16)), data(), data()};
    if (kind < 55)
        return {uint8_t(0x80U | below(random, 16)), data(), data()};
    if (kind < 80)
        return {uint8_t(0xB0U | below(random, 16)), data(), data()};
    if (kind < 97) {
        return {uint8_t(0xA0U + 0x10U * below(random, 5) + below(random, 16)), data(), data()};
    }
    if (kind < 98)
        return GM_ON;
    std::vector<uint8_t> damage(below(random, 12));
    for (uint8_t& byte : damage)
        byte = uint8_t(random());
    return damage;
}

std::vector<TimedMessage> any_song(Random& random) {
    std::vector<TimedMessage> song;
    uint32_t time = uint32_t(random());
    for (int i = 0; i < 1500; i++) {
        time += below(random, 3) == 0 ? 0 : below(random, 3000);
        song.push_back({time, any_message(random)});
    }
    return song;
}

class RandomMessages : public testing::TestWithParam<unsigned> {
  protected:
    RandomMessages() : seed(GetParam()) {
        EXPECT_EQ(load_gm_map_from_string(map, "family = kick hats whistle\n"
                                               "k00_036 = kick 1 60 100 64 400\n"
                                               "k00_042 = hats 7 96 50 84 120 46\n"
                                               "k00_046 = hats 8 97 100 84 30000 42\n"
                                               "k00_072 = whistle 9 70 100 20 held 71\n"
                                               "p000_env1_decay = key -20 vel 5\n"
                                               "p003_vibrato = 5 20 0.2 0.1\n"),
                  "");
        sounds.melodic.fill(&default_controller_bytes());
        sounds.drums.fill(&default_controller_bytes());
        sounds.globals = &default_controller_bytes();
    }

    void play(const std::vector<TimedMessage>& song, EngineModel& model, GmDialect& dialect,
              uint32_t largest_step) const {
        Random random(seed);
        dialect.set_sounds(sounds, &map);
        dialect.start(song.front().time);
        uint32_t now = song.front().time;
        for (const TimedMessage& message : song) {
            while (largest_step != 0 && now != message.time) {
                now += std::min(1 + below(random, largest_step), message.time - now);
                dialect.advance(now, model);
            }
            dialect.advance(message.time, model);
            const size_t before = model.events.size();
            dialect.translate(message.time, message.bytes, model);
            ASSERT_LE(model.events.size() - before, GmDialect::MAX_EVENTS_PER_CALL);
        }
    }

    const unsigned seed;
    GmMap map;
    GmSounds sounds;
};

TEST_P(RandomMessages, KeepTheRules) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const std::vector<TimedMessage> song = any_song(random);
    EngineModel whole;
    GmDialect dialect;
    play(song, whole, dialect, 0);
    if (HasFatalFailure())
        return;
    EngineModel pieces;
    GmDialect other;
    play(song, pieces, other, 700);
    // What was scheduled behind the last message has come in neither.
    ASSERT_EQ(whole.events.size(), pieces.events.size());
    for (size_t i = 0; i < whole.events.size(); i++) {
        ASSERT_EQ(whole.events[i].first, pieces.events[i].first);
        ASSERT_EQ(whole.events[i].second.time, pieces.events[i].second.time);
        ASSERT_EQ(whole.events[i].second.status, pieces.events[i].second.status);
        ASSERT_EQ(whole.events[i].second.data1, pieces.events[i].second.data1);
        ASSERT_EQ(whole.events[i].second.data2, pieces.events[i].second.data2);
    }

    // Every message counts once.
    const GmReport& report = dialect.report();
    uint64_t counted = 0;
    for (const uint64_t count : report.kinds)
        counted += count;
    for (const uint64_t count : report.controllers)
        counted += count;
    EXPECT_EQ(counted, report.messages);
    EXPECT_EQ(report.messages, song.size());

    // Pedals up and all notes off end every note; drums end by themselves.
    uint32_t time = song.back().time;
    for (unsigned channel = 0; channel < 16; channel++) {
        for (const int controller : {64, 66, 123}) {
            const uint8_t message[] = {uint8_t(0xB0U | channel), uint8_t(controller), 0};
            dialect.translate(time, message, whole);
        }
    }
    time += 31 * 44100;
    dialect.advance(time, whole);
    EXPECT_EQ(whole.num_sounding(), 0U);
    EXPECT_EQ(dialect.num_held_notes(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomMessages, testing::Range(1U, 9U));

} // namespace
} // namespace tarquil
