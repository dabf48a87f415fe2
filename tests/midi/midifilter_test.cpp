// Tests of what raw MIDI the engine takes; the recorded sequences have what becomes of it.

#include "midi/midifilter.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace tarquil {

namespace {

using Bytes = std::array<uint8_t, 3>;

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
