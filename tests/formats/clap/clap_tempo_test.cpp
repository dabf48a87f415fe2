// Tests of the tempo that CLAP hosts tell.

#include <gtest/gtest.h>

#include "tests/formats/clap/clap_host.h"
#include "tests/formats/common/tempo_song.h"

namespace tarquil {

namespace {

TEST(ClapTempo, TransportEventsActOnTheirFrame) {
    const auto sound = [](uint32_t frame) {
        ClapTestHost host(false, nullptr, following_state());
        EXPECT_TRUE(host.activate());
        host.midi({0x90, 60, 100}, 0);
        host.add_transport(transport_at(TEMPO_CHANGE, 44100), frame);
        return host.render(30000);
    };
    EXPECT_NE(sound(640), sound(12800));
    EXPECT_NE(sound(640), sound(641)); // its beats are a sample later
}

TEST(ClapTempo, ParametersThatFollowAreShownAsNoteLengths) {
    ClapTestHost host(false, nullptr, following_state());
    EXPECT_EQ(host.text(CTRL_DELAY_LEFT_TIME, 31), "1/8");
    double value = 0;
    EXPECT_TRUE(host.params().text_to_value(host.plugin, CTRL_RETRIGGER_BPM, "1/4", &value));
    EXPECT_EQ(host.text(CTRL_RETRIGGER_BPM, value), "1/4");
    ASSERT_TRUE(host.load(following_state(false)));
    EXPECT_EQ(host.text(CTRL_DELAY_LEFT_TIME, 31), "252 ms");
}

} // namespace

} // namespace tarquil
