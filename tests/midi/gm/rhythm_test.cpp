// Drum kits on the second engine.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "midi/gm/gm_map_file.h"
#include "tests/midi/gm/engine_model.h"

namespace tarquil {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned DRUMS = 9;

class Rhythm : public testing::Test, public DialectRig {
  protected:
    Rhythm() {
        EXPECT_EQ(load_gm_map_from_string(map, "family = kick hats whistle\n"
                                               "k00_036 = kick 1 60 100 64 400\n"
                                               "k00_042 = hats 7 96 50 84 120 46\n"
                                               "k00_046 = hats 8 97 100 84 3000 42\n"
                                               "k00_072 = whistle 9 70 100 20 held 71\n"
                                               "k16_036 = kick 40 62 100 64 500\n"
                                               "d007_env1_decay = vel 12\n"),
                  "");
        hat[CTRL_ENV1_DECAY] = 33;
        sounds.drums[7] = &hat;
        use();
    }
    [[nodiscard]] const std::set<unsigned>& drums(unsigned family) const {
        return model.channels[RHYTHM_ENGINE][family].notes;
    }
    void hit(uint8_t key, uint8_t velocity = 100) { note_on(key, velocity, DRUMS); }

    ControllerBytes hat = default_controller_bytes();
};

TEST_F(Rhythm, HitsEndByThemselves) {
    hit(36);
    note_off(36, DRUMS);
    EXPECT_THAT(drums(0), ElementsAre(60));
    wait(0.399);
    EXPECT_THAT(drums(0), ElementsAre(60));
    wait(0.002);
    EXPECT_THAT(drums(0), IsEmpty());
    EXPECT_EQ(model.num_sounding(), 0U);
}

TEST_F(Rhythm, ASecondHitCountsAnew) {
    hit(36);
    wait(0.3);
    hit(36);
    wait(0.3); // past the first one's end
    EXPECT_THAT(drums(0), ElementsAre(60));
    wait(0.11);
    EXPECT_THAT(drums(0), IsEmpty());
}

TEST_F(Rhythm, HatsChokeEachOther) {
    hit(46);
    wait(0.1);
    hit(42);
    EXPECT_THAT(drums(1), ElementsAre(96));
    const EngineModel::Strike& closed = model.strikes.back();
    EXPECT_EQ(closed.bytes[CTRL_ENV1_DECAY], 33); // the law adds nothing at velocity 100
    EXPECT_EQ(closed.velocity,
              engine_velocity(50, VelocityLaw::SQUARE,
                              volume_correction(exact_volume(hat[CTRL_MAIN_VOLUME], 100, 127,
                                                             MAX_MASTER_VOLUME))));
    EXPECT_EQ(closed.bytes[CTRL_PANNING], pan_byte(84));
    hit(42, 124);
    EXPECT_EQ(model.strikes.back().bytes[CTRL_ENV1_DECAY], 57);
}

TEST_F(Rhythm, LongSoundsFollowTheirKey) {
    hit(72);
    wait(5.0);
    EXPECT_THAT(drums(2), ElementsAre(70));
    note_off(72, DRUMS);
    EXPECT_THAT(drums(2), IsEmpty());
    hit(72);
    control(123, 0, DRUMS);
    EXPECT_THAT(drums(2), IsEmpty());
}

TEST_F(Rhythm, KitsNameOnlyWhatDiffers) {
    send({0xC9, 16});
    hit(36);
    EXPECT_EQ(model.strikes.back().note, 62U);
    hit(42);
    EXPECT_EQ(model.strikes.back().note, 96U);
    send({0xC9, 99}); // not known: the first
    hit(36);
    EXPECT_EQ(model.strikes.back().note, 60U);
    hit(80);
    EXPECT_EQ(dialect.report().kinds[unsigned(GmMessage::DRUMS_WITHOUT_SOUND)], 1U);
}

TEST_F(Rhythm, OtherChannelsBecomeRhythmParts) {
    send({0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0x1A, 0x15, 0x01, 0x10, 0xF7}); // channel 11
    note_on(36, 100, 10);
    EXPECT_EQ(model.strikes.back().engine, RHYTHM_ENGINE);
    control(0, 120, 3); // GM2's rhythm bank
    send({0xC3, 0});
    note_on(36, 100, 3);
    EXPECT_EQ(model.strikes.back().engine, RHYTHM_ENGINE);
    control(0, 0, 3);
    send({0xC3, 0});
    note_on(36, 100, 3);
    EXPECT_EQ(model.strikes.back().engine, MELODIC_ENGINE);
    control(0, 127, 4); // XG's, but this is not XG
    send({0xC4, 0});
    note_on(36, 100, 4);
    EXPECT_EQ(model.strikes.back().engine, MELODIC_ENGINE);
    send({0xF0, 0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00, 0xF7});
    control(0, 127, 4);
    send({0xC4, 0});
    note_on(36, 100, 4);
    EXPECT_EQ(model.strikes.back().engine, RHYTHM_ENGINE);
}

TEST_F(Rhythm, LevelsAndSilenceReachTheFamilies) {
    hit(46);
    control(7, 40, DRUMS);
    wait(0.003);
    EXPECT_EQ(model.channels[RHYTHM_ENGINE][1].bytes[CTRL_MAIN_VOLUME],
              volume_byte(exact_volume(bytes[CTRL_MAIN_VOLUME], 40, 127, MAX_MASTER_VOLUME)));
    control(120, 0, DRUMS);
    EXPECT_EQ(model.channels[RHYTHM_ENGINE][1].silences, 1U);
    EXPECT_EQ(model.channels[RHYTHM_ENGINE][0].silences, 0U);
    EXPECT_EQ(dialect.num_held_notes(), 0U);
}

TEST_F(Rhythm, OnlyChangesAreSent) {
    hit(36);
    wait(1.0);
    const size_t count = model.events.size();
    hit(36);
    EXPECT_EQ(model.events.size(), count + 1);
}

TEST_F(Rhythm, FamiliesAgreeInWhatTheyShare) {
    EXPECT_EQ(find_family_conflict(map, sounds), "");
    hat[CTRL_CHAN_FILTER2_CUTOFF] ^= 1;
    EXPECT_EQ(find_family_conflict(map, sounds),
              "hats: key 42 of kit 0 and key 46 of kit 0 differ in chan_filter2_cutoff");
}

} // namespace
} // namespace tarquil
