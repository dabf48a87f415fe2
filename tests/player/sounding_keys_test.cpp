// Tests of what is played by hand and of the keys that are told to sound, in both dialects.

#include "player/sounding_keys.h"

#include <gtest/gtest.h>

#include "tests/support/player_host.h"

namespace tarquil {

namespace {

class SoundingKeysTest : public testing::TestWithParam<MidiDialect> {
  protected:
    SoundingKeysTest() {
        player.set_dialect(GetParam());
        player.start();
        player.meters().watched = true;
        render();
    }

    void midi(unsigned status, unsigned data1, unsigned data2) { host.midi(status, data1, data2); }
    float render() { return peak(host.render(256, 256)); }
    // Of a channel, in order.
    std::string sounding(unsigned channel) {
        render();
        const SoundingKeys::Keys keys = player.sounding_keys().channels[channel].take_keys();
        std::string text;
        for (size_t key = 0; key < keys.size(); key++)
            if (keys[key])
                text += std::to_string(key) + " ";
        return text;
    }
    [[nodiscard]] static bool is_gm() { return GetParam() == MidiDialect::GENERAL_MIDI; }

    PlayerHost host{false};
    Player& player = *host;
};

TEST_P(SoundingKeysTest, NotesOfHandAndHostAreToldUntilTheyEnd) {
    const uint32_t changes = player.num_changes();
    player.play_key(2, 60, 100);
    player.play_key(2, 127, 1);
    midi(0x92, 0, 90);
    midi(0x95, 63, 90);
    EXPECT_EQ(sounding(2), "0 60 127 ");
    EXPECT_EQ(sounding(5), "63 ");
    EXPECT_GT(render(), 0.0F);
    EXPECT_EQ(player.num_changes(), changes) << "nothing that is saved or shown as a value";
    midi(0x92, 60, 0);
    player.play_key(2, 127, 0);
    EXPECT_EQ(sounding(2), "0 ");
    midi(0xB2, 123, 0);
    EXPECT_EQ(sounding(2), "");
    EXPECT_EQ(sounding(5), "63 ");
}

TEST_P(SoundingKeysTest, ANoteThatIsOverAtOnceIsSeenOnce) {
    midi(0x90, 64, 100);
    midi(0x80, 64, 0);
    EXPECT_EQ(sounding(0), "64 ");
    EXPECT_EQ(sounding(0), "");
}

TEST_P(SoundingKeysTest, PanicAndOtherDialectsEndThem) {
    midi(0x93, 50, 100);
    EXPECT_EQ(sounding(3), "50 ");
    player.silence();
    sounding(3);
    EXPECT_EQ(sounding(3), "");
    midi(0x93, 50, 100);
    EXPECT_EQ(sounding(3), "50 ");
    player.set_dialect(is_gm() ? MidiDialect::NATIVE : MidiDialect::GENERAL_MIDI);
    sounding(3);
    EXPECT_EQ(sounding(3), "");
}

TEST_P(SoundingKeysTest, BendModulationAndSustainAreToldAsTheyStand) {
    const SoundingKeys::Channel& channel = player.sounding_keys().channels[4];
    EXPECT_EQ(channel.bend, 8192);
    player.bend(4, 16383);
    player.set_modulation(4, 100);
    player.set_sustain(4, true);
    player.play_key(4, 60, 100);
    sounding(4);
    player.play_key(4, 60, 0);
    EXPECT_EQ(sounding(4), is_gm() ? "60 " : "") << "the pedal holds it";
    EXPECT_EQ(channel.bend, 16383);
    EXPECT_EQ(channel.modulation, is_gm() ? 100 : 0);
    EXPECT_EQ(channel.is_sustained, is_gm());
    midi(0xE4, 0, 32);
    player.set_sustain(4, false);
    EXPECT_EQ(sounding(4), "");
    EXPECT_EQ(channel.bend, 32 * 128);
    EXPECT_FALSE(channel.is_sustained);
    player.set_dialect(is_gm() ? MidiDialect::NATIVE : MidiDialect::GENERAL_MIDI);
    sounding(4);
    EXPECT_EQ(channel.modulation, 0);
}

// Nothing renders while the queue fills, as in a host that has stopped.
TEST_P(SoundingKeysTest, ANoteWhoseEndFoundNoRoomEndsAllTheSame) {
    player.play_key(1, 60, 100);
    EXPECT_EQ(sounding(1), "60 ");
    for (int i = 0; i < 5000; i++)
        player.bend(1, 8192);
    player.play_key(1, 60, 0);
    sounding(1);
    EXPECT_EQ(sounding(1), "");
    player.play_key(1, 61, 100);
    for (int i = 0; i < 2; i++)
        EXPECT_EQ(sounding(1), "61 ") << "what comes later is not ended with it";
}

INSTANTIATE_TEST_SUITE_P(Dialects, SoundingKeysTest,
                         testing::Values(MidiDialect::NATIVE, MidiDialect::GENERAL_MIDI),
                         [](const auto& given) {
                             return given.param == MidiDialect::NATIVE ? "native" : "general_midi";
                         });

// A drum whose length the map says sounds as long as that.
TEST(SoundingDrums, AreToldAsLongAsTheirHitsLast) {
    auto set = std::make_shared<GmSet>();
    set->drums = std::make_unique<TarqSettings>();
    DrumKit& kit = set->map.make_kit(0);
    kit[36] = DrumKey{.instrument = 1};
    kit[38] = DrumKey{.instrument = 2, .note = 62, .milliseconds = 10};
    PlayerHost host(false);
    Player& player = *host;
    player.set_gm_set(set);
    player.set_dialect(MidiDialect::GENERAL_MIDI);
    player.start();
    player.meters().watched = true;
    const auto sounding = [&] {
        host.render(256); // 6 ms
        return player.sounding_keys().channels[9].take_keys();
    };
    for (const unsigned key : {36U, 37U, 38U})
        player.play_key(9, key, 100);
    EXPECT_EQ(sounding().count(), 3U) << "struck, though one has no sound";
    for (int i = 0; i < 3; i++)
        sounding();
    EXPECT_EQ(sounding(), SoundingKeys::Keys().set(36));
    player.play_key(9, 36, 0);
    sounding();
    EXPECT_TRUE(sounding().none());
}

} // namespace

} // namespace tarquil
