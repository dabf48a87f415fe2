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
    TextEntry entry{FIELD, "Name", "before", [this](const std::string& text) {
                        taken = text;
                        return is_meaningful;
                    }};
};

TEST_F(TextEntryTest, EnterAndTabTakeTheText) {
    for (const Key key : {Key::ENTER, Key::TAB}) {
        TextEntry each{FIELD, "Name", "before", [this](const std::string& text) {
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

TEST(Question, EnterIsTheFirstAnswerEscapeTheLastAndArrowsLeadToTheOthers) {
    std::string answer;
    const auto ask = [&answer] {
        answer.clear();
        const auto say = [&answer](const char* what) { return [&answer, what] { answer = what; }; };
        return std::make_unique<Question>(
            "Save it?", std::vector<Question::Answer>{
                            {"Save", say("save")}, {"Discard", say("discard")}, {"Stay", nullptr}});
    };
    const std::pair<std::vector<Key>, std::string> cases[] = {
        {{Key::ENTER}, "save"},
        {{Key::RIGHT, Key::ENTER}, "discard"},
        {{Key::LEFT, Key::LEFT, Key::ENTER}, "discard"},
        {{Key::TAB, Key::TAB, Key::TAB, Key::ENTER}, "save"},
        {{Key::ESCAPE}, ""},
        {{Key::LEFT, Key::ENTER}, ""},
    };
    for (const auto& [keys, wanted] : cases) {
        const auto question = ask();
        for (const Key key : keys) {
            EXPECT_FALSE(question->is_done());
            press_keys(*question, {key});
        }
        EXPECT_EQ(answer, wanted);
        EXPECT_TRUE(question->is_done());
    }
    const Point middle{WINDOW_WIDTH / 2, WINDOW_HEIGHT / 2};
    const auto question = ask();
    question->press(left_press({middle.x, middle.y - 40}));
    EXPECT_FALSE(question->is_done()) << "its text is no answer";
    question->press(left_press({middle.x + 40, middle.y + 40}));
    EXPECT_EQ(answer, "discard");
    const auto other = ask();
    other->press(left_press({5, 5}));
    EXPECT_EQ(answer, "");
    EXPECT_TRUE(other->is_done()) << "beside it: the last one";
}

} // namespace

} // namespace tarquil
