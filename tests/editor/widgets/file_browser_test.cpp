// Tests of choosing files: what is listed, where Enter leads, and what is asked first.

#include "editor/widgets/file_browser.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

#include "common/load_string.h"
#include "editor/kit/window_size.h"
#include "editor/model/bank_synth.h"
#include "editor/plots/response_worker.h"
#include "tests/editor/user_input.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

// A window that keeps what is opened over it.
class FakeWindow : public UiHost {
  public:
    EditorModel& get_model() override { return model; }
    ViewState& get_view_state() override { return state; }
    const EditorMeters& get_meters() override { return synth.meters; }
    ResponseWorker& get_responses() override { return responses; }
    void open_overlay(std::unique_ptr<Overlay> overlay) override { opened = std::move(overlay); }
    void choose_file(FileRequest /*request*/) override {}
    std::optional<unsigned> channel_at(Point /*at*/) override { return std::nullopt; }
    void show_message(const std::string& /*text*/, MessageKind /*kind*/) override {}

    std::unique_ptr<Overlay> opened;

  private:
    BankSynth synth;
    EditorModel model{synth};
    ViewState state;
    ResponseWorker responses;
};

// Folders "a folder" (with in.tqi) and "b"; files 1.tqi, 2.tqi, other.txt and .hidden.tqi.
class FileBrowserTest : public testing::Test {
  protected:
    FileBrowserTest() {
        std::filesystem::create_directories(directory.path("b"));
        std::filesystem::create_directories(directory.path("a folder"));
        for (const char* name : {"2.tqi", "1.tqi", "other.txt", ".hidden.tqi", "a folder/in.tqi"})
            save_file_to_string(directory.path(name), "text");
    }

    FileBrowser& open(bool is_new, const std::string& folder) {
        chosen.clear();
        remembered.clear();
        window.opened.reset();
        browser = std::make_unique<FileBrowser>(
            window,
            FileRequest{"Title", ".tqi", is_new, "",
                        [this](const std::string& path) {
                            chosen = path;
                            return problem;
                        }},
            folder, [this](const std::string& new_folder) { remembered = new_folder; });
        return *browser;
    }
    FileBrowser& open(bool is_new = false) { return open(is_new, directory.path()); }
    std::string chosen_by(std::initializer_list<Key> keys) {
        press_keys(*browser, keys);
        return chosen;
    }

    TempDirectory directory;
    FakeWindow window;
    std::unique_ptr<FileBrowser> browser;
    std::string chosen;
    std::string remembered;
    std::string problem; // with what is chosen
};

TEST_F(FileBrowserTest, ListsFoldersThenFilesOfTheKindByName) {
    open();
    EXPECT_EQ(chosen_by({Key::DOWN, Key::DOWN, Key::DOWN, Key::ENTER}), directory.path("1.tqi"));
    EXPECT_TRUE(browser->is_done());
    EXPECT_EQ(remembered, directory.path());
    open();
    EXPECT_EQ(chosen_by({Key::DOWN, Key::DOWN, Key::DOWN, Key::DOWN, Key::DOWN, Key::ENTER}),
              directory.path("2.tqi"))
        << "the last one";
    open();
    EXPECT_EQ(chosen_by({Key::DOWN, Key::DOWN, Key::DOWN, Key::DOWN, Key::UP, Key::ENTER}),
              directory.path("1.tqi"));
}

TEST_F(FileBrowserTest, EnterOpensAFolderAndUpLeavesIt) {
    open();
    chosen_by({Key::DOWN, Key::ENTER});
    EXPECT_FALSE(browser->is_done());
    EXPECT_EQ(chosen_by({Key::DOWN, Key::ENTER}), directory.path("a folder/in.tqi"));
    EXPECT_EQ(remembered, directory.path("a folder"));
    open(false, directory.path("a folder"));
    const Point up{WINDOW_WIDTH / 2 - 280, 110};
    browser->press(left_press(up));
    EXPECT_EQ(chosen_by({Key::DOWN, Key::DOWN, Key::DOWN, Key::ENTER}), directory.path("1.tqi"));
    open(false, directory.path("b"));
    EXPECT_EQ(chosen_by({Key::DOWN, Key::ENTER}), "") << "an empty folder";
    type_text(*browser, directory.path("a folder"));
    EXPECT_EQ(chosen_by({Key::ENTER, Key::DOWN, Key::ENTER}), directory.path("a folder/in.tqi"));
}

TEST_F(FileBrowserTest, BeginsAtHomeWhenTheFolderIsGone) {
    const char* home = std::getenv("HOME");
    const std::string before = home != nullptr ? home : "";
    setenv("HOME", directory.path().c_str(), 1);
    for (const std::string& gone : {std::string(), directory.path("none")}) {
        open(false, gone);
        EXPECT_EQ(chosen_by({Key::DOWN, Key::DOWN, Key::DOWN, Key::ENTER}),
                  directory.path("1.tqi"));
    }
    setenv("HOME", before.c_str(), 1);
}

TEST_F(FileBrowserTest, ANewNameGetsItsEndingAndAnOldOneAQuestion) {
    for (const char* name : {"new", "new.tqi"}) {
        type_text(open(true), name);
        EXPECT_EQ(chosen_by({Key::ENTER}), directory.path("new.tqi"));
    }
    type_text(open(true), "1");
    EXPECT_EQ(chosen_by({Key::ENTER}), "");
    EXPECT_FALSE(browser->is_done());
    ASSERT_NE(window.opened, nullptr);
    press_keys(*window.opened, {Key::ENTER});
    EXPECT_EQ(chosen, directory.path("1.tqi"));
    EXPECT_EQ(remembered, directory.path());
    EXPECT_TRUE(browser->is_done());
    type_text(open(), "1.tqi");
    EXPECT_EQ(chosen_by({Key::ENTER}), directory.path("1.tqi")) << "to be read: no question";
    open(true);
    EXPECT_EQ(chosen_by({Key::ENTER}), "") << "no name, no file";
    EXPECT_FALSE(browser->is_done());
    EXPECT_EQ(chosen_by({Key::ESCAPE}), "");
    EXPECT_TRUE(browser->is_done());
}

TEST_F(FileBrowserTest, WhatFailsKeepsTheDialogItsFolderAndItsName) {
    problem = directory.path("b/new.tqi") + ": cannot be written: read-only folder";
    type_text(open(true, directory.path("b")), "new");
    EXPECT_EQ(chosen_by({Key::ENTER}), directory.path("b/new.tqi"));
    EXPECT_FALSE(browser->is_done());
    EXPECT_EQ(remembered, "") << "only where something worked";
    problem.clear();
    chosen.clear();
    EXPECT_EQ(chosen_by({Key::ENTER}), directory.path("b/new.tqi")) << "the name is still there";
    EXPECT_TRUE(browser->is_done());
    EXPECT_EQ(remembered, directory.path("b"));
}

// Rows of 24 units begin 134 below the window's top.
TEST_F(FileBrowserTest, ThePointerPicksRowsAndButtons) {
    const auto row = [](int number) { return Point{WINDOW_WIDTH / 2, 134 + 24 * number + 20.0}; };
    const Point accept{WINDOW_WIDTH / 2 + 120, 590};
    const Point cancel{WINDOW_WIDTH / 2 + 220, 590};
    open().press(left_press(row(3)));
    EXPECT_EQ(chosen, "");
    browser->press(left_press(accept));
    EXPECT_EQ(chosen, directory.path("2.tqi"));
    open().press(left_press(row(2), true));
    EXPECT_EQ(chosen, directory.path("1.tqi")) << "a double click";
    open().press(left_press(row(0)));
    browser->press(left_press(row(0), true));
    browser->press(left_press(row(0), true));
    EXPECT_EQ(chosen, directory.path("a folder/in.tqi"));
    open().press(left_press(row(4), true));
    EXPECT_EQ(chosen, "") << "below the last row";
    browser->press(left_press(cancel));
    EXPECT_TRUE(browser->is_done());
}

TEST_F(FileBrowserTest, ALongListScrolls) {
    std::filesystem::create_directories(directory.path("many"));
    for (int i = 100; i < 150; i++)
        save_file_to_string(directory.path("many/" + std::to_string(i) + ".tqi"), "text");
    const auto top = [this] {
        browser->press(left_press({WINDOW_WIDTH / 2, 140}, true));
        return chosen.substr(chosen.size() - 7);
    };
    open(false, directory.path("many")).wheel({}, -1.0);
    EXPECT_EQ(top(), "103.tqi");
    open(false, directory.path("many")).wheel({}, -100.0);
    EXPECT_EQ(top(), "134.tqi") << "16 fit";
    open(false, directory.path("many")).wheel({}, -100.0);
    browser->wheel({}, 100.0);
    EXPECT_EQ(top(), "100.tqi");
    open(false, directory.path("many"));
    for (int i = 0; i < 20; i++)
        press_keys(*browser, {Key::DOWN});
    EXPECT_EQ(top(), "104.tqi") << "the marked one stays in sight";
    open(false, directory.path("many")).wheel({}, -100.0);
    press_keys(*browser, {Key::DOWN, Key::DOWN, Key::UP});
    EXPECT_EQ(top(), "100.tqi");
}

} // namespace

} // namespace tarquil
