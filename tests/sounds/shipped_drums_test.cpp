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

TEST(ShippedDrums, TheNineKitsAreThere) {
    for (unsigned key = STANDARD_FIRST; key <= STANDARD_LAST; key++)
        EXPECT_NE(shipped_gm_map().find_drum(0, key), nullptr) << key;
    for (const unsigned kit : KITS)
        EXPECT_NE(shipped_gm_map().kit(kit), nullptr) << kit;
}

class ShippedKit : public testing::TestWithParam<unsigned> {};

TEST_P(ShippedKit, SoundsAndEnds) {
    const DrumKit& kit = *shipped_gm_map().kit(GetParam());
    SetPlayer player;
    player.choose_kit(GetParam());
    for (unsigned key = 0; key < NUM_KEYS; key++) {
        if (!kit[key])
            continue;
        SCOPED_TRACE("key " + std::to_string(key));
        double energies[2];
        for (const bool hard : {false, true}) {
            player.note_on(SetPlayer::DRUMS, key, hard ? 115 : 45);
            const std::vector<float> stroke = player.render(1.0); // some swell
            energies[hard ? 1 : 0] = energy_of(stroke);
            player.note_off(SetPlayer::DRUMS, key);
            EXPECT_LT(player.seconds_until_silent(), 5.0);
            if (hard) {
                EXPECT_GT(peak_of(stroke), 0.003F);
                EXPECT_LT(peak_of(stroke), 0.95F);
            }
        }
        EXPECT_GT(energies[1], 5.0 * energies[0]); // 7 dB
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
