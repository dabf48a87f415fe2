// Every drum of every kit, played: it sounds, follows the velocity, and ends.

#include <gtest/gtest.h>

#include "sounds/shipped_sounds.h"
#include "tests/sounds/set_player.h"

namespace tarquil {
namespace {

constexpr unsigned STANDARD_FIRST = 27;
constexpr unsigned STANDARD_LAST = 87;
constexpr unsigned KITS[] = {0, 8, 16, 24, 25, 32, 40, 48, 56};

double energy_of(const std::vector<float>& sound) {
    double sum = 0.0;
    for (const float sample : sound)
        sum += double(sample) * sample;
    return sum;
}

TEST(ShippedDrums, EveryStandardKeyHasOne) {
    for (unsigned key = STANDARD_FIRST; key <= STANDARD_LAST; key++)
        EXPECT_NE(shipped_gm_map().find_drum(0, key), nullptr) << key;
}

class ShippedKit : public testing::TestWithParam<unsigned> {};

TEST_P(ShippedKit, SoundsAndEnds) {
    const DrumKit* const kit = shipped_gm_map().kit(GetParam());
    ASSERT_NE(kit, nullptr);
    SetPlayer player;
    player.choose_kit(GetParam());
    for (unsigned key = 0; key < NUM_KEYS; key++) {
        if (!(*kit)[key])
            continue;
        SCOPED_TRACE("key " + std::to_string(key));
        const auto stroke = [&](unsigned velocity) { // some swell
            return player.play(SetPlayer::DRUMS, key, velocity, 1.0, 5.0);
        };
        const std::vector<float> soft = stroke(45);
        const std::vector<float> hard = stroke(115);
        EXPECT_GT(peak(hard), 0.003F);
        EXPECT_LT(peak(hard), 0.95F);
        EXPECT_GT(energy_of(hard), 5.0 * energy_of(soft)); // 7 dB
    }
}

INSTANTIATE_TEST_SUITE_P(Kits, ShippedKit, testing::ValuesIn(KITS));

TEST(ShippedDrums, AClosedHatEndsAnOpenOne) {
    SetPlayer player;
    const auto ring = [&player](bool is_closed) {
        player.note_on(SetPlayer::DRUMS, 46, 110);
        player.render(0.3);
        if (is_closed)
            player.note_on(SetPlayer::DRUMS, 42, 1);
        player.render(0.3);
        const double energy = energy_of(player.render(0.1));
        player.seconds_until_silent();
        return energy;
    };
    const double open = ring(false);
    EXPECT_LT(ring(true), open / 100.0);
}

} // namespace
} // namespace tarquil
