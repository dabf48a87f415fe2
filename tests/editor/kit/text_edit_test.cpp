// Tests of typing a line of text.

#include "editor/kit/text_edit.h"

#include <gtest/gtest.h>

#include "tests/editor/user_input.h"

namespace tarquil {

namespace {

// What stands there when the keys, and then an "x", have been pressed.
std::string edited(const std::string& start, std::initializer_list<Key> keys) {
    TextEdit edit(start);
    press_keys(edit, keys);
    type_text(edit, "x");
    return edit.get_text();
}

TEST(TextEdit, AllOfItIsSelectedUntilTheCursorMoves) {
    EXPECT_EQ(edited("abc", {}), "x");
    EXPECT_EQ(edited("abc", {Key::LEFT}), "xabc");
    EXPECT_EQ(edited("abc", {Key::RIGHT}), "abcx");
    EXPECT_EQ(edited("abc", {Key::HOME}), "xabc");
    EXPECT_EQ(edited("abc", {Key::END}), "abcx");
    EXPECT_EQ(edited("abc", {Key::BACKSPACE}), "x");
    EXPECT_EQ(edited("abc", {Key::DEL}), "x");
    TextEdit edit("abc");
    press_keys(edit, {Key::END});
    edit.press_key({Key::CHARACTER, "a", false, true});
    type_text(edit, "yz");
    EXPECT_EQ(edit.get_text(), "yz") << "Control-A selects again";
}

TEST(TextEdit, TheCursorStaysInsideAndWhatItRemovesIsOneCharacter) {
    EXPECT_EQ(edited("abc", {Key::END, Key::LEFT, Key::LEFT, Key::RIGHT}), "abxc");
    EXPECT_EQ(edited("abc", {Key::END, Key::RIGHT, Key::LEFT}), "abxc");
    EXPECT_EQ(edited("abc", {Key::HOME, Key::LEFT, Key::RIGHT}), "axbc");
    EXPECT_EQ(edited("abc", {Key::END, Key::BACKSPACE}), "abx");
    EXPECT_EQ(edited("abc", {Key::HOME, Key::BACKSPACE}), "xabc");
    EXPECT_EQ(edited("abc", {Key::HOME, Key::DEL}), "xbc");
    EXPECT_EQ(edited("abc", {Key::END, Key::DEL}), "abcx");
    // Of two, three and four bytes.
    EXPECT_EQ(edited("a\u00e9\u20ac", {Key::END, Key::LEFT, Key::BACKSPACE}), "ax\u20ac");
    EXPECT_EQ(edited("\U0001F3B9b", {Key::HOME, Key::RIGHT}), "\U0001F3B9xb");
    EXPECT_EQ(edited("\u20acb", {Key::HOME, Key::DEL}), "xb");
}

TEST(TextEdit, TakesCharactersOnlyAndSoManyOfThem) {
    TextEdit edit("abc");
    press_keys(edit, {Key::END});
    EXPECT_TRUE(edit.press_key({Key::CHARACTER, "\u00e9", false, false}));
    for (const KeyEvent& other : {KeyEvent{Key::CHARACTER, "\n", false, false},
                                  {Key::CHARACTER, "\x7F", false, false},
                                  {Key::CHARACTER, "", false, false},
                                  {Key::CHARACTER, "c", false, true},
                                  {Key::UP, "", false, false},
                                  {Key::ENTER, "", false, false}})
        EXPECT_FALSE(edit.press_key(other));
    EXPECT_EQ(edit.get_text(), "abc\u00e9");
    type_text(edit, std::string(2 * TextEdit::MAX_LENGTH, 'y'));
    EXPECT_EQ(edit.get_text().size(), TextEdit::MAX_LENGTH);
}

} // namespace

} // namespace tarquil
