// Tests of the selected channel: what is edited is what is heard.

#include <gmock/gmock.h>

#include "editor/model/bank_synth.h"
#include "editor/model/editor_model.h"
#include "softsynth/parameters/rhythm_channel.h"

namespace tarquil {

namespace {

class FollowingSynth : public BankSynth {
  public:
    [[nodiscard]] bool follows_messages() const override { return follows; }
    bool follows = false;
};

class SelectedChannelTest : public testing::Test {
  protected:
    // As a MIDI message does it.
    void play(unsigned channel, unsigned program) {
        synth.channel_programs[channel] = uint8_t(program);
        model.refresh();
    }
    FollowingSynth synth;
    EditorModel model{synth};
};

TEST_F(SelectedChannelTest, AProgramThatIsChosenIsPlayedAndEditedInOneStep) {
    model.select_channel(2);
    EXPECT_EQ(synth.program, 2U);
    model.choose_program(90);
    EXPECT_EQ(synth.channel_programs[2], 90);
    EXPECT_EQ(synth.program, 90U);
    EXPECT_TRUE(model.is_heard());
    model.select_channel(5);
    model.undo();
    EXPECT_EQ(synth.channel_programs[2], 2);
    EXPECT_EQ(model.channel(), 2U) << "what is undone is shown";
    EXPECT_EQ(synth.program, 2U);
    EXPECT_EQ(model.undo_name(), "");
    model.redo();
    EXPECT_EQ(synth.program, 90U);
    EXPECT_TRUE(model.is_heard());
}

TEST_F(SelectedChannelTest, EditingWithoutPlayingLeavesWhatSounds) {
    model.select_channel(3);
    const auto before = synth.channel_programs;
    model.select_program(77);
    EXPECT_FALSE(model.is_heard());
    EXPECT_EQ(synth.channel_programs, before);
    EXPECT_EQ(model.channel(), 3U) << "it still gets what is chosen next";
    model.select_program(9);
    EXPECT_TRUE(model.is_heard()) << "a channel plays that";
    EXPECT_EQ(model.channel(), 9U);
}

TEST_F(SelectedChannelTest, AProgramOfTheHostIsShownWithTheChannelThatPlaysIt) {
    synth.channel_programs[1] = 40;
    synth.channel_programs[6] = 40;
    model.refresh();
    synth.program = 40;
    model.refresh();
    EXPECT_EQ(model.channel(), 1U);
    model.select_channel(6);
    model.refresh();
    EXPECT_EQ(model.channel(), 6U) << "the one that the user has chosen";
    synth.program = 100;
    model.refresh();
    EXPECT_FALSE(model.is_heard());
}

TEST_F(SelectedChannelTest, TheChannelIsKeptWithTheSounds) {
    synth.channel_programs[1] = synth.channel_programs[6] = 40;
    model.refresh();
    model.select_channel(6);
    EXPECT_EQ(synth.selected_channel, 6U);
    EditorModel reopened{synth};
    EXPECT_EQ(reopened.channel(), 6U);
    synth.selected_channel = 1; // another state has been loaded
    model.refresh();
    EXPECT_EQ(model.channel(), 1U);
    synth.selected_channel = 9;
    model.refresh();
    EXPECT_EQ(model.channel(), 1U) << "that one does not play what is edited";
}

TEST_F(SelectedChannelTest, AMessageMovesTheEditorWhereNoAutomationMeansTheProgram) {
    model.select_channel(4);
    play(4, 60);
    EXPECT_EQ(synth.program, 4U);
    EXPECT_FALSE(model.is_heard());
    synth.follows = true;
    play(4, 61);
    EXPECT_EQ(synth.program, 4U) << "it was edited without being played";
    model.select_channel(4);
    model.begin_gesture("Drag");
    model.set_value(CTRL_PANNING, 3);
    play(4, 62);
    EXPECT_EQ(synth.program, 62U);
    model.set_value(CTRL_PANNING, 4);
    EXPECT_NE(synth.bank.get_instrument(62).get_controller(CTRL_PANNING), 4)
        << "the drag was the other program's";
    play(5, 63);
    EXPECT_EQ(synth.program, 62U) << "another channel";
}

TEST_F(SelectedChannelTest, TheDrumChannelHasKitsAndIsNeverEdited) {
    model.select_channel(9);
    model.set_dialect(MidiDialect::GENERAL_MIDI);
    synth.channel_programs.fill(0);
    synth.program = 0;
    model.refresh();
    EXPECT_EQ(model.channel(), 0U);
    model.select_channel(RHYTHM_CHANNEL);
    EXPECT_EQ(model.channel(), 0U);
    model.assign_channel(RHYTHM_CHANNEL, 8);
    EXPECT_EQ(synth.channel_programs[RHYTHM_CHANNEL], 8);
    EXPECT_EQ(synth.program, 0U);
    synth.program = 8;
    model.refresh();
    EXPECT_FALSE(model.is_heard()) << "a kit of that number is not the program";
}

} // namespace

} // namespace tarquil
