// System exclusive messages that are damaged, and GS sums; what the others do is in the tests of
// parts and controllers.

#include "midi/gm/sysex.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarquil {
namespace {

SysexMessage read(std::vector<uint8_t> bytes) {
    return read_sysex(bytes);
}

TEST(Sysex, ChecksGsSums) {
    EXPECT_EQ(read({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x41, 0xF7}).kind,
              SysexKind::GS_RESET);
    EXPECT_EQ(read({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x00, 0x7F, 0x00, 0x40, 0xF7}).kind,
              SysexKind::UNKNOWN);
    const SysexMessage tenth =
        read({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x10, 0x15, 0x00, 0x1B, 0xF7});
    EXPECT_EQ(tenth.kind, SysexKind::GS_RHYTHM_PART);
    EXPECT_EQ(tenth.channel, 9U);
    EXPECT_EQ(tenth.value, 0U);
    EXPECT_EQ(read({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x19, 0x15, 0x02, 0x10, 0xF7}).channel, 8U);
    EXPECT_EQ(read({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x1F, 0x15, 0x02, 0x0A, 0xF7}).channel,
              15U);
}

TEST(Sysex, RefusesDamage) {
    const std::vector<uint8_t> whole = {0xF0, 0x41, 0x10, 0x42, 0x12, 0x40,
                                        0x00, 0x7F, 0x00, 0x41, 0xF7};
    for (size_t length = 0; length < whole.size(); length++)
        EXPECT_EQ(read({whole.begin(), whole.begin() + ptrdiff_t(length)}).kind,
                  SysexKind::UNKNOWN);
    EXPECT_EQ(read({0xF0, 0x7E, 0x7F, 0x09, 0xF7}).kind, SysexKind::UNKNOWN);
    EXPECT_EQ(read({0xF0, 0xF7}).kind, SysexKind::UNKNOWN);
    EXPECT_EQ(read({0xF0, 0x7E, 0xFF, 0x09, 0x01, 0xF7}).kind, SysexKind::UNKNOWN);
}

} // namespace
} // namespace tarquil
