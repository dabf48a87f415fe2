// Tests of the translation of raw MIDI messages.

#include "midi/midifilter.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

using Bytes = std::array<uint8_t, 3>;

constexpr uint32_t TIME = 123456789;

// The events of one message, without their times, which must all be its own.
std::vector<Bytes> filtered(const Bytes& message) {
    midi_event events[MAX_OUT_EVENTS];
    const unsigned count = filter_event(TIME, message.data(), events);
    std::vector<Bytes> result;
    for (unsigned i = 0; i < count; i++) {
        EXPECT_EQ(events[i].time, TIME);
        result.push_back({events[i].status, events[i].data1, events[i].data2});
    }
    return result;
}

TEST(MidiFilter, PassesNotesAndPrograms) {
    const std::vector<Bytes> messages = {{0x8F, 60, 33}, {0x95, 127, 1}, {0xC3, 12, 0}};
    for (const Bytes& message : messages)
        EXPECT_EQ(filtered(message), std::vector<Bytes>{message});
}

TEST(MidiFilter, TurnsVelocityZeroIntoNoteOff) {
    EXPECT_EQ(filtered({0x93, 60, 0}), (std::vector<Bytes>{{0x83, 60, 0}}));
}

TEST(MidiFilter, TurnsPitchBendIntoTwoControllersCoarseFirst) {
    EXPECT_EQ(filtered({0xE2, 0x12, 0x40}),
              (std::vector<Bytes>{{0xB2, 96, 0x40}, {0xB2, 97, 0x12}}));
}

TEST(MidiFilter, DropsWhatTheEngineDoesNotKnow) {
    const std::vector<Bytes> messages = {{0xA0, 60, 1}, {0xB0, 96, 5}, {0xB7, 97, 5}, {0xD0, 1, 0},
                                         {0xF0, 1, 2},  {0xFF, 1, 2},  {0x00, 1, 2},  {0x7F, 1, 2}};
    for (const Bytes& message : messages)
        EXPECT_TRUE(filtered(message).empty()) << int(message[0]);
}

TEST(MidiFilter, ReleasesEveryNoteOnAllNotesOff) {
    const std::vector<Bytes> events = filtered({0xB9, 123, 0});
    ASSERT_EQ(events.size(), 128U);
    for (unsigned note = 0; note < 128; note++)
        EXPECT_EQ(events[note], (Bytes{0x89, uint8_t(note), 100}));
}

TEST(MidiFilter, MovesGlobalControllersToChannelZeroAndClampsChoices) {
    EXPECT_EQ(filtered({0xB9, 13, 77}), (std::vector<Bytes>{{0xB0, 13, 77}}));
    EXPECT_EQ(filtered({0xB9, 202, 100}), (std::vector<Bytes>{{0xB0, 202, 8}}));
    EXPECT_EQ(filtered({0xB9, 148, 0}), (std::vector<Bytes>{{0xB9, 148, 1}}));
    EXPECT_EQ(filtered({0xB9, 148, 120}), (std::vector<Bytes>{{0xB9, 148, 96}}));
    EXPECT_EQ(filtered({0xB9, 131, 127}), (std::vector<Bytes>{{0xB9, 131, 24}}));
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (number == 96 || number == 97 || number == 123)
            continue;
        const std::vector<Bytes> events = filtered({0xB9, uint8_t(number), 1});
        ASSERT_EQ(events.size(), 1U) << number;
        EXPECT_EQ(events[0][0], is_global_controller(number) ? 0xB0 : 0xB9) << number;
    }
}

TEST(MidiFilter, RefusesDataBytesThatTheEngineCannotTake) {
    const std::vector<Bytes> bad = {{0x80, 128, 0}, {0x80, 0, 128}, {0x91, 200, 1},
                                    {0x91, 1, 200}, {0xB2, 206, 0}, {0xB2, 7, 128},
                                    {0xC3, 128, 0}, {0xE4, 128, 0}, {0xE4, 0, 255}};
    for (const Bytes& message : bad)
        EXPECT_FALSE(is_playable_message(message.data())) << int(message[0]);
    const std::vector<Bytes> good = {
        {0x80, 127, 127}, {0xB2, 205, 127}, {0xC3, 127, 255}, {0xE4, 127, 127}, {0xF0, 255, 255}};
    for (const Bytes& message : good)
        EXPECT_TRUE(is_playable_message(message.data())) << int(message[0]);
}

} // namespace

} // namespace tarquil
