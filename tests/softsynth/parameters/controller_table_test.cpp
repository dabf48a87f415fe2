// Freezes the controller table's numbers, keys and order; docs/parameters.md has the rest of it.

#include "softsynth/parameters/controller_table.h"

#include <gtest/gtest.h>

#include <string>

namespace tarquil {

namespace {

// FNV-1a over every row's number and key: any change of a number, a key or the order shows.
uint64_t hash_of_rows() {
    uint64_t hash = 0xcbf29ce484222325;
    for (const ControllerInfo& info : controller_rows()) {
        for (const char c : std::to_string(unsigned(info.number)) + " " + info.key + "\n") {
            hash ^= uint8_t(c);
            hash *= 0x100000001b3;
        }
    }
    return hash;
}

TEST(ControllerTable, NumbersKeysAndOrderAreFrozen) {
    // Hosts address parameters by position and files by key: a new row is only ever appended, and
    // this number then changes on purpose.
    EXPECT_EQ(hash_of_rows(), 0x32957D0BC247F175ULL);
}

TEST(ControllerTable, EveryByteSurvivesTheMapping) {
    for (const ControllerInfo& info : controller_rows()) {
        for (int value = 0; value < 128; value++)
            ASSERT_EQ(map_float_to_char(info.number, map_char_to_float(info.number, value)), value)
                << info.key;
    }
}

} // namespace

} // namespace tarquil
