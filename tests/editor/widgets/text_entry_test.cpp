// Tests of the field over the page and of the question.

#include "editor/widgets/text_entry.h"

#include <gtest/gtest.h>

#include <optional>

#include "editor/kit/window_size.h"
#include "editor/widgets/question.h"
#include "tests/editor/user_input.h"

namespace tarquil {

namespace {

constexpr Rect FIELD{100, 100, 60, 20};
constexpr Point INSIDE{101, 119};
constexpr Point OUTSIDE{161, 110};

class TextEntryTest : public testing::Test {
  protected:
    std::optional<std::string> taken;
    bool is_meaningful = true;
    TextEntry entry{FIELD, "before", [this](const std::string& text) {
                        taken = text;
                        return is_meaningful;
                    }};
};

TEST_F(TextEntryTest, EnterAndTabTakeTheText) {
    for (const Key key : {Key::ENTER, Key::TAB}) {
        TextEntry each{FIELD, "before", [this](const std::string& text) {
                           taken = text;
                           return true;
                       }};
        EXPECT_TRUE(each.takes_text());
        type_text(each, key == Key::TAB ? "t" : "e");
        EXPECT_FALSE(taken == "t" || each.is_done());
        press_keys(each, {key});
        EXPECT_EQ(taken, key == Key::TAB ? "t" : "e");
        EXPECT_TRUE(each.is_done());
    }
}

TEST_F(TextEntryTest, WhatMeansNothingKeepsItOpen) {
    is_meaningful = false;
    type_text(entry, "?");
    press_keys(entry, {Key::ENTER});
    EXPECT_FALSE(entry.is_done());
    is_meaningful = true;
    type_text(entry, "!");
    press_keys(entry, {Key::ENTER});
    EXPECT_EQ(taken, "?!");
    EXPECT_TRUE(entry.is_done());
}

TEST_F(TextEntryTest, EscapeLeavesItAsItWas) {
    type_text(entry, "x");
    press_keys(entry, {Key::ESCAPE});
    EXPECT_TRUE(entry.is_done());
    EXPECT_EQ(taken, std::nullopt);
}

TEST_F(TextEntryTest, AClickElsewhereTakesWhatHasChanged) {
    type_text(entry, "after");
    entry.press(left_press(INSIDE));
    EXPECT_FALSE(entry.is_done());
    entry.press(left_press(OUTSIDE));
    EXPECT_TRUE(entry.is_done());
    EXPECT_EQ(taken, "after");
}

TEST_F(TextEntryTest, AClickElsewhereWithNothingTypedIsNoEdit) {
    entry.press(left_press(OUTSIDE));
    EXPECT_TRUE(entry.is_done());
    EXPECT_EQ(taken, std::nullopt);
}

TEST(Question, OnlyItsButtonAndEnterDoIt) {
    const Point yes{WINDOW_WIDTH / 2 + 60, WINDOW_HEIGHT / 2 + 30};
    const Point no{WINDOW_WIDTH / 2 + 170, WINDOW_HEIGHT / 2 + 30};
    const Point beside{2, 2};
    const Point text{WINDOW_WIDTH / 2, WINDOW_HEIGHT / 2};
    for (const auto& [at, is_yes, closes] : {std::tuple{yes, true, true},
                                             {no, false, true},
                                             {beside, false, true},
                                             {text, false, false}}) {
        bool done = false;
        Question question("Replace it?", "Replace", [&done] { done = true; });
        question.press(left_press(at));
        EXPECT_EQ(done, is_yes) << at.x;
        EXPECT_EQ(question.is_done(), closes) << at.x;
    }
    for (const Key key : {Key::ENTER, Key::ESCAPE, Key::UP}) {
        bool done = false;
        Question question("Replace it?", "Replace", [&done] { done = true; });
        press_keys(question, {key});
        EXPECT_EQ(done, key == Key::ENTER);
        EXPECT_EQ(question.is_done(), key != Key::UP);
    }
}

} // namespace

} // namespace tarquil
