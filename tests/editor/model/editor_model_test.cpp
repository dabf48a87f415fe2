// Tests of the editor's gestures, its undo, and what it does to programs and files.

#include "editor/model/editor_model.h"

#include <gmock/gmock.h>

#include "common/load_string.h"
#include "editor/model/bank_synth.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;

// Notes what the host is told.
class ListeningSynth : public BankSynth {
  public:
    void begin_edit(unsigned number) override { calls.push_back("begin " + name(number)); }
    void set_controller(unsigned number, int value) override {
        BankSynth::set_controller(number, value);
        calls.push_back(name(number) + " " + std::to_string(value));
    }
    void end_edit(unsigned number) override { calls.push_back("end " + name(number)); }

    std::vector<std::string> calls;

  private:
    static std::string name(unsigned number) { return find_controller(number)->key; }
};

class EditorModelTest : public testing::Test {
  protected:
    [[nodiscard]] int sound(unsigned program, unsigned number) {
        return synth.bank.get_instrument(program).get_controller(number);
    }
    std::string name(unsigned program) { return synth.bank.get_instrument(program).get_name(); }

    ListeningSynth synth;
    EditorModel model{synth};
};

TEST_F(EditorModelTest, TheRevisionComesBackWithUndoAndWithNothingElse) {
    const auto start = model.revision();
    model.set_value(CTRL_FILTER1_CUTOFF, 30);
    const auto first = model.revision();
    EXPECT_NE(first, start);
    model.undo();
    EXPECT_EQ(model.revision(), start);
    model.set_value(CTRL_FILTER1_CUTOFF, 30);
    EXPECT_NE(model.revision(), first) << "another edit, though of the same value";
    const auto second = model.revision();
    model.begin_gesture("Drag");
    EXPECT_EQ(model.revision(), second);
    model.set_value(CTRL_FILTER1_CUTOFF, 50);
    EXPECT_EQ(model.revision(), std::nullopt) << "a change that is not over";
    model.end_gesture();
    // So many steps that the first ones are forgotten.
    for (size_t i = 0; i < UndoHistory::MAX_STEPS + 1; i++)
        model.set_value(CTRL_FILTER1_CUTOFF, 60 + int(i % 2));
    while (!model.undo_name().empty())
        model.undo();
    EXPECT_NE(model.revision(), start) << "what cannot be undone to is not taken for it";
    const auto oldest = model.revision();
    TarqSettings other;
    other.get_instrument(3).set_name("other");
    model.begin_anew(other, {});
    EXPECT_EQ(name(3), "other");
    EXPECT_EQ(model.undo_name(), "");
    EXPECT_NE(model.revision(), oldest);
}

TEST_F(EditorModelTest, ADragIsOneStepAndOneEditOfTheHost) {
    const int before = model.value(CTRL_FILTER1_CUTOFF);
    model.begin_gesture("Drag");
    for (const int value : {before, 50, 60, 500})
        model.set_value(CTRL_FILTER1_CUTOFF, value);
    model.end_gesture();
    EXPECT_THAT(synth.calls,
                ElementsAre("begin filter1_cutoff", "filter1_cutoff 50", "filter1_cutoff 60",
                            "filter1_cutoff 127", "end filter1_cutoff"));
    model.undo();
    EXPECT_EQ(sound(0, CTRL_FILTER1_CUTOFF), before);
    EXPECT_EQ(model.undo_name(), "");
    model.redo();
    EXPECT_EQ(model.value(CTRL_FILTER1_CUTOFF), 127);
}

TEST_F(EditorModelTest, AGestureThatEndsWhereItBeganIsNoStep) {
    const int before = model.value(CTRL_PANNING);
    model.begin_gesture("Drag");
    model.set_value(CTRL_PANNING, before + 5);
    model.set_value(CTRL_PANNING, before);
    model.end_gesture();
    EXPECT_EQ(model.undo_name(), "");
    EXPECT_EQ(synth.calls.back(), "end panning");
}

TEST_F(EditorModelTest, ChoicesStayWithinTheirList) {
    model.set_value(CTRL_OSC1_TYPE, 99);
    EXPECT_EQ(sound(0, CTRL_OSC1_TYPE), 5);
    model.set_value(CTRL_CHAN_MAX_VOICES, -3);
    EXPECT_EQ(sound(0, CTRL_CHAN_MAX_VOICES), 1);
    model.set_value(CTRL_PANNING, -3);
    EXPECT_EQ(sound(0, CTRL_PANNING), 0);
}

TEST_F(EditorModelTest, UndoGoesBackToTheProgramThatWasChanged) {
    const int before = model.value(CTRL_MAIN_VOLUME);
    model.select_program(3);
    model.set_value(CTRL_MAIN_VOLUME, 5);
    model.select_program(7);
    model.set_value(CTRL_MAIN_VOLUME, 9);
    model.undo();
    model.undo();
    EXPECT_EQ(synth.program, 3U);
    EXPECT_EQ(sound(3, CTRL_MAIN_VOLUME), before);
    EXPECT_EQ(sound(7, CTRL_MAIN_VOLUME), before);
    model.select_program(100);
    model.redo();
    EXPECT_EQ(sound(3, CTRL_MAIN_VOLUME), 5);
    EXPECT_EQ(sound(100, CTRL_MAIN_VOLUME), before);
}

TEST_F(EditorModelTest, AProgramChangeOfTheHostEndsTheDrag) {
    model.begin_gesture("Drag");
    model.set_value(CTRL_PANNING, 1);
    synth.program = 4;
    model.refresh();
    model.set_value(CTRL_PANNING, 2);
    model.end_gesture();
    EXPECT_NE(sound(4, CTRL_PANNING), 2);
    model.undo();
    EXPECT_EQ(sound(0, CTRL_PANNING), 64);
    model.set_value(CTRL_PANNING, 3);
    EXPECT_EQ(sound(0, CTRL_PANNING), 3) << "the next one is heard again";
}

TEST_F(EditorModelTest, AutomationWhileDraggingIsShownAndNotPartOfTheStep) {
    model.begin_gesture("Drag");
    model.set_value(CTRL_PANNING, 1);
    synth.BankSynth::set_controller(CTRL_PANNING, 90);
    synth.BankSynth::set_controller(CTRL_AUX1_LEVEL, 33);
    model.refresh();
    EXPECT_EQ(model.value(CTRL_PANNING), 90);
    model.set_value(CTRL_PANNING, 2);
    EXPECT_EQ(sound(0, CTRL_PANNING), 2);
    model.end_gesture();
    model.undo();
    EXPECT_EQ(sound(0, CTRL_PANNING), 64);
    EXPECT_EQ(sound(0, CTRL_AUX1_LEVEL), 33);
}

TEST_F(EditorModelTest, NamesAreWhatFilesCanHold) {
    model.rename_program(2, "wide pad #2\n");
    EXPECT_EQ(name(2), "wide_pad__2");
    Instrument copy;
    copy.load_from_string(synth.bank.get_instrument(2).save_to_string());
    EXPECT_EQ(copy.get_name(), name(2));
    model.rename_program(2, "  ");
    EXPECT_EQ(name(2), "wide_pad__2");
    model.undo();
    EXPECT_EQ(name(2), "instrument_2");
}

TEST_F(EditorModelTest, SlotsAreCopiedSwappedAndInitialisedAtBothEnds) {
    synth.bank.get_instrument(0).set_name("first");
    synth.bank.get_instrument(0).set_controller(CTRL_PANNING, 7);
    model.swap_programs(0, 127);
    EXPECT_EQ(name(127), "first");
    EXPECT_EQ(name(0), "instrument_127");
    EXPECT_EQ(sound(127, CTRL_PANNING), 7);
    model.copy_program(127, 64);
    EXPECT_EQ(name(64), "first");
    model.initialise_program(127);
    EXPECT_EQ(name(127), "instrument_127");
    EXPECT_EQ(sound(127, CTRL_PANNING), 64);
    EXPECT_EQ(synth.bank.get_instrument(127).get_filename(), "instr_127.tqi");
    model.paste_instrument(synth.bank.get_instrument(64), 3);
    EXPECT_EQ(name(3), "first");
    EXPECT_EQ(model.undo_name(), "Paste");
    for (int i = 0; i < 4; i++)
        model.undo();
    EXPECT_EQ(name(0), "first");
    EXPECT_EQ(sound(0, CTRL_PANNING), 7);
    EXPECT_EQ(name(64), "instrument_64");
}

TEST_F(EditorModelTest, BanksAndInstrumentsGoThroughFiles) {
    const TempDirectory directory;
    model.set_song("Title #1", "Me");
    model.set_value(CTRL_REVERB_DAMP, 3);
    model.rename_program(5, "five");
    EXPECT_EQ(model.export_bank(directory.path("b.tqb")), "");
    EXPECT_EQ(model.export_instrument(directory.path("i.tqi"), 5), "");
    model.initialise_program(5);
    model.set_value(CTRL_REVERB_DAMP, 4);
    EXPECT_EQ(model.import_bank(directory.path("b.tqb")), "");
    EXPECT_EQ(name(5), "five");
    EXPECT_EQ(model.value(CTRL_REVERB_DAMP), 3);
    EXPECT_EQ(model.get_state().song_title, "Title _1");
    EXPECT_EQ(model.import_instrument(directory.path("i.tqi"), 9), "");
    EXPECT_EQ(name(9), "five");
    model.undo();
    model.undo();
    EXPECT_EQ(model.value(CTRL_REVERB_DAMP), 4);
    EXPECT_EQ(name(9), "instrument_9");
}

TEST_F(EditorModelTest, AFileThatDoesNotLoadSaysWhyAndChangesNothing) {
    const TempDirectory directory;
    ASSERT_EQ(save_file_to_string(directory.path("bad.tqb"), "nonsense\n"), 0);
    const std::string before = synth.bank.get_instrument(1).save_to_string();
    EXPECT_THAT(model.import_bank(directory.path("bad.tqb")), HasSubstr("has no key of"));
    EXPECT_THAT(model.import_instrument(directory.path("bad.tqb"), 1), HasSubstr("has no key of"));
    EXPECT_THAT(model.import_instrument(directory.path("none.tqi"), 1), HasSubstr("opened"));
    EXPECT_THAT(model.import_bank(directory.path("none.tqb")), HasSubstr("opened"));
    EXPECT_THAT(model.export_bank(directory.path("none/x.tqb")), HasSubstr("written"));
    EXPECT_EQ(synth.bank.get_instrument(1).save_to_string(), before);
    EXPECT_EQ(model.undo_name(), "");
}

TEST_F(EditorModelTest, AStepIsUndoneFromItsEnd) {
    model.begin_gesture("Both");
    model.set_value(CTRL_REVERB_DAMP, 1);
    model.set_value(CTRL_PANNING, 2);
    model.end_gesture();
    synth.calls.clear();
    model.undo();
    EXPECT_THAT(synth.calls, ElementsAre("begin panning", "panning 64", "end panning",
                                         "begin reverb_damp", _, "end reverb_damp"));
    synth.calls.clear();
    model.redo();
    EXPECT_THAT(synth.calls, ElementsAre("begin reverb_damp", "reverb_damp 1", "end reverb_damp",
                                         "begin panning", "panning 2", "end panning"));
}

TEST_F(EditorModelTest, ANewEditForgetsWhatWasUndone) {
    model.set_value(CTRL_PANNING, 1);
    model.set_value(CTRL_PANNING, 2);
    model.undo();
    model.undo();
    EXPECT_EQ(model.redo_name(), "Panning");
    model.set_value(CTRL_REVERB_DAMP, 3);
    EXPECT_EQ(model.redo_name(), "");
    model.redo();
    EXPECT_EQ(sound(0, CTRL_PANNING), 64);
    model.undo();
    EXPECT_EQ(model.undo_name(), "");
}

TEST_F(EditorModelTest, ChannelsAndTheSongAreSteps) {
    model.assign_channel(3, 40);
    EXPECT_EQ(synth.channel_programs[3], 40);
    EXPECT_EQ(model.undo_name(), "Channel 4");
    model.set_song("Title", "");
    model.set_song("Title", "Author");
    model.undo();
    EXPECT_EQ(synth.bank.get_song_title(), "Title");
    EXPECT_EQ(synth.bank.get_song_author(), "");
    model.undo();
    model.undo();
    EXPECT_EQ(model.get_state().channel_programs[3], 3);
    EXPECT_EQ(synth.bank.get_song_title(), "");
    model.redo();
    EXPECT_EQ(synth.channel_programs[3], 40);
    EXPECT_EQ(model.get_state().channel_programs[3], 40);
    model.set_dialect(MidiDialect::GENERAL_MIDI);
    model.set_dialect(MidiDialect::GENERAL_MIDI); // no step
    EXPECT_EQ(synth.bank.get_midi_dialect(), MidiDialect::GENERAL_MIDI);
    model.undo();
    EXPECT_EQ(model.get_state().dialect, MidiDialect::NATIVE);
    model.set_tempo_sync(true);
    model.set_tempo_sync(true); // no step
    EXPECT_TRUE(synth.bank.get_tempo_sync());
    EXPECT_TRUE(model.get_state().tempo_sync);
    model.undo();
    EXPECT_FALSE(synth.bank.get_tempo_sync());
    model.redo();
    EXPECT_TRUE(synth.bank.get_tempo_sync());
}

TEST_F(EditorModelTest, WhatChangesNothingIsNoStep) {
    model.set_value(CTRL_PANNING, model.value(CTRL_PANNING));
    model.assign_channel(3, 3);
    model.set_song("", "");
    model.rename_program(2, name(2));
    model.copy_program(4, 4);
    model.swap_programs(4, 4);
    EXPECT_EQ(model.undo_name(), "");
    EXPECT_TRUE(synth.calls.empty());
}

TEST_F(EditorModelTest, EverythingElseEndsTheDragFirst) {
    model.begin_gesture("Drag");
    model.set_value(CTRL_PANNING, 1);
    model.undo();
    EXPECT_FALSE(model.is_in_gesture());
    EXPECT_EQ(model.redo_name(), "Drag");
    model.begin_gesture("Drag");
    model.set_value(CTRL_PANNING, 1);
    model.begin_gesture("Next");
    EXPECT_EQ(synth.calls.back(), "end panning");
    EXPECT_EQ(model.undo_name(), "Drag");
    model.redo();
    EXPECT_FALSE(model.is_in_gesture());
    model.begin_gesture("Next");
    model.assign_channel(5, 9);
    EXPECT_FALSE(model.is_in_gesture());
    model.undo();
    model.begin_gesture("Next");
    model.select_program(5);
    EXPECT_TRUE(model.is_in_gesture()) << "it was that already";
    model.select_program(9);
    EXPECT_FALSE(model.is_in_gesture());
    model.undo();
    EXPECT_EQ(sound(0, CTRL_PANNING), 64);
}

TEST_F(EditorModelTest, ARefreshTellsOfChangesOnce) {
    EXPECT_FALSE(model.refresh());
    synth.bank.get_instrument(0).set_controller(CTRL_PANNING, 3);
    EXPECT_TRUE(model.refresh());
    EXPECT_EQ(model.value(CTRL_PANNING), 3);
    EXPECT_FALSE(model.refresh());
}

} // namespace

} // namespace tarquil
