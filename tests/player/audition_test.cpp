// Tests of sounds that are tried: heard, and of no consequence.

#include "player/audition.h"

#include <gtest/gtest.h>

#include <cmath>

#include "instrument/names.h"
#include "tests/support/player_host.h"

namespace tarquil {

namespace {

constexpr Phrase::value_type LONG_NOTE{0, 60'000, 60, 100};

class AuditionTest : public testing::TestWithParam<MidiDialect> {
  protected:
    struct Listener {
        Listener() {
            player.set_dialect(GetParam());
            player.start();
            render(0.01);
        }
        std::vector<float> render(double seconds) {
            constexpr uint32_t BLOCK = 252;
            return host.render(uint32_t(std::ceil(seconds * SAMPLE_RATE / BLOCK)) * BLOCK, BLOCK);
        }
        PlayerHost host{false};
        Player& player = *host;
    };
    static ControllerBytes tried() { return built_in_instrument(0).get_bytes(); }

    Listener one;
    Listener other; // that tries nothing
};

TEST_P(AuditionTest, IsHeardBesideWhatIsPlayedAndChangesNothing) {
    const std::string state = one.player.save_state();
    const uint32_t changes = one.player.num_changes();
    for (Listener* each : {&one, &other}) {
        each->player.play_key(0, 48, 100);
        each->render(0.2);
    }
    one.player.audition(tried(), {LONG_NOTE});
    EXPECT_NE(one.render(0.5), other.render(0.5));
    EXPECT_EQ(one.player.save_state(), state);
    EXPECT_EQ(one.player.num_changes(), changes);
    one.player.end_audition();
    one.render(3.0);
    other.render(3.0);
    EXPECT_EQ(one.render(0.5), other.render(0.5)) << "to the bit";
}

TEST_P(AuditionTest, EndsByItselfWhenToldAndWithAllElse) {
    EXPECT_EQ(peak(one.render(0.2)), 0.0F);
    one.player.audition(tried(), {{0, 100, 60, 100}, {300, 100, 67, 100}});
    EXPECT_GT(peak(one.render(0.1)), 0.01F);
    one.render(0.15);
    EXPECT_LT(peak(one.render(0.04)), 0.001F) << "between the notes";
    EXPECT_GT(peak(one.render(0.1)), 0.01F);
    one.render(2.0);
    EXPECT_EQ(peak(one.render(0.2)), 0.0F);
    for (const bool by_panic : {false, true}) {
        one.player.audition(tried(), {LONG_NOTE});
        EXPECT_GT(peak(one.render(0.2)), 0.01F);
        if (by_panic)
            one.player.silence();
        else
            one.player.end_audition();
        one.render(0.02);
        EXPECT_LT(peak(one.render(0.2)), 0.001F);
        one.render(2.0);
        EXPECT_EQ(peak(one.render(0.2)), 0.0F);
    }
}

TEST_P(AuditionTest, AnotherTakesItsPlace) {
    ControllerBytes silent = tried();
    silent[CTRL_MAIN_VOLUME] = 0;
    one.player.audition(tried(), {LONG_NOTE, {100, 60'000, 64, 100}});
    EXPECT_GT(peak(one.render(0.2)), 0.01F);
    one.player.audition(silent, {LONG_NOTE});
    one.render(0.02);
    EXPECT_LT(peak(one.render(0.2)), 0.001F);
}

INSTANTIATE_TEST_SUITE_P(Dialects, AuditionTest,
                         testing::Values(MidiDialect::NATIVE, MidiDialect::GENERAL_MIDI));

// What would ring on for ever is ended.
TEST(Audition, LastsNoLongerThanTenSecondsBeyondThePhrase) {
    ControllerBytes endless = built_in_instrument(0).get_bytes();
    endless[CTRL_AUX2_LEVEL] = 127;
    PlayerHost player(false);
    for (const unsigned number : {CTRL_DELAY_FEEDBACK, CTRL_DELAY_LEFT_TIME, CTRL_DELAY_RIGHT_TIME})
        player->set_controller(number, 127);
    player->start();
    player->audition(endless, {{0, 100, 60, 100}});
    const auto loudest = [&](uint32_t blocks) { return peak(player.render(blocks * 2048, 2048)); };
    loudest(180);
    EXPECT_GT(loudest(30), 0.0F) << "until 9.75 s";
    loudest(60);
    EXPECT_EQ(loudest(60), 0.0F) << "from 12.5 s on";
}

} // namespace

} // namespace tarquil
