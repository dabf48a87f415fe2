// Tests of the file behind the window of the stand-alone program, and of what is kept beside it.

#include "standalone/autosave.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "common/load_string.h"
#include "frame/player_synth.h"
#include "tests/support/files.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

class AutosaveTest : public testing::Test {
  protected:
    [[nodiscard]] std::string folder() const { return directory.path("state"); }
    [[nodiscard]] std::optional<SessionBackup::Lost> lost_after_a_crash() {
        backup.reset();
        return SessionBackup(folder()).lost();
    }
    static Autosave::Time at(int seconds) {
        return Autosave::Time() + std::chrono::seconds(1000 + seconds);
    }
    int cutoff() { return player.get_controller(CTRL_FILTER1_CUTOFF); }

    TempDirectory directory;
    Player player;
    PlayerSynth synth{player};
    EditorModel model{synth};
    BankDocument document{player, model, ""};
    std::optional<SessionBackup> backup{std::in_place, folder()};
    Autosave autosave{document, model, *backup};
};

TEST_F(AutosaveTest, UndoingBackToTheSavedStateLeavesNothingToSave) {
    EXPECT_EQ(document.title(), "Untitled - Tarquil");
    model.set_value(CTRL_FILTER1_CUTOFF, 40);
    EXPECT_EQ(document.title(), "*Untitled - Tarquil");
    model.undo();
    EXPECT_FALSE(document.is_changed());
    model.redo();
    const std::string path = directory.path("mine.tqb");
    ASSERT_EQ(document.save(path), "");
    EXPECT_EQ(document.title(), "mine.tqb - Tarquil");
    model.undo();
    EXPECT_TRUE(document.is_changed()) << "the file has the edit";
    model.redo();
    EXPECT_FALSE(document.is_changed());
    model.set_value(CTRL_FILTER1_CUTOFF, 50);
    EXPECT_NE(document.save(directory.path("none/mine.tqb")), "");
    EXPECT_TRUE(document.is_changed());
    EXPECT_EQ(document.path(), path) << "a save that fails leaves its file";
}

TEST_F(AutosaveTest, AFileBringsBackSoundsAndChannels) {
    const std::string path = directory.path("mine.tqb");
    model.set_value(CTRL_FILTER1_CUTOFF, 40);
    model.assign_channel(2, 77);
    model.select_channel(0);
    ASSERT_EQ(document.save(path), "");
    model.set_value(CTRL_FILTER1_CUTOFF, 90);
    model.assign_channel(2, 5);
    model.select_channel(0);
    ASSERT_EQ(document.open(path), "");
    EXPECT_EQ(cutoff(), 40);
    EXPECT_EQ(player.channel_program(2), 77U);
    EXPECT_FALSE(document.is_changed());
    EXPECT_EQ(model.undo_name(), "") << "undo must not bring another file's sounds into this one";
    save_file_to_string(directory.path("broken"), "nothing");
    EXPECT_NE(document.open(directory.path("broken")), "");
    EXPECT_EQ(cutoff(), 40);
    EXPECT_EQ(document.path(), path);
}

TEST_F(AutosaveTest, KeepsWhatIsInNoFileAndDropsItWhenItIs) {
    autosave.poll(at(0));
    model.set_value(CTRL_FILTER1_CUTOFF, 40);
    autosave.poll(at(1));
    EXPECT_FALSE(backup->has_kept());
    autosave.poll(at(40));
    EXPECT_TRUE(backup->has_kept());
    model.set_value(CTRL_FILTER1_CUTOFF, 41);
    autosave.poll(at(41));
    autosave.poll(at(80));
    ASSERT_EQ(document.save(directory.path("mine.tqb")), "");
    autosave.poll(at(81));
    EXPECT_FALSE(backup->has_kept());
    EXPECT_FALSE(lost_after_a_crash());
}

TEST_F(AutosaveTest, WhatIsRestoredIsTheLastThatWasKeptAndIsNotSaved) {
    ASSERT_EQ(document.save(directory.path("mine.tqb")), "");
    for (const int value : {40, 41}) {
        model.set_value(CTRL_FILTER1_CUTOFF, value);
        model.assign_channel(2, 77);
        EXPECT_EQ(autosave.keep_now(), "");
    }
    const auto lost = lost_after_a_crash();
    ASSERT_TRUE(lost);
    EXPECT_EQ(lost->path, directory.path("mine.tqb"));
    ASSERT_EQ(document.open(directory.path("mine.tqb")), "");
    EXPECT_NE(cutoff(), 41);
    ASSERT_EQ(document.restore(lost->text, lost->path), "");
    EXPECT_EQ(cutoff(), 41);
    EXPECT_EQ(player.channel_program(2), 77U);
    EXPECT_TRUE(document.is_changed());
    EXPECT_EQ(document.title(), "*mine.tqb - Tarquil");
    ASSERT_EQ(document.save(document.path()), "");
    EXPECT_EQ(file_text(document.path()).find("# edited"), std::string::npos)
        << "the mark is no part of the bank";
}

} // namespace

} // namespace tarquil
