// Tests of menus: what is chosen by keys, by the pointer and by the search.

#include "editor/widgets/menu.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "editor/kit/window_size.h"
#include "tests/editor/user_input.h"

namespace tarquil {

namespace {

constexpr int NOTHING = -1;

class MenuTest : public testing::Test {
  protected:
    // Items "Item 0", "Item 1", ...; `checked` and `disabled` by number.
    Menu& open(int count, int checked = NOTHING, int disabled = NOTHING, bool has_search = false,
               const Rect& anchor = {100, 100, 80, 20}) {
        std::vector<MenuItem> items;
        for (int i = 0; i < count; i++)
            items.push_back({"Item " + std::to_string(i), i == checked, i != disabled,
                             [this, i] { chosen = i; }});
        chosen = NOTHING;
        menu = std::make_unique<Menu>(anchor, std::move(items), has_search);
        return *menu;
    }
    int after(Menu& opened, std::initializer_list<Key> keys) {
        press_keys(opened, keys);
        return chosen;
    }

    int chosen = NOTHING;
    std::unique_ptr<Menu> menu;
};

TEST_F(MenuTest, KeysWalkFromTheCheckedItemAndStopAtTheEnds) {
    EXPECT_EQ(after(open(5), {Key::DOWN, Key::ENTER}), 0);
    EXPECT_TRUE(menu->is_done());
    EXPECT_EQ(after(open(5), {Key::UP, Key::ENTER}), 4);
    EXPECT_EQ(after(open(5, 2), {Key::ENTER}), 2);
    EXPECT_EQ(after(open(5, 2), {Key::DOWN, Key::ENTER}), 3);
    EXPECT_EQ(after(open(5, 2), {Key::UP, Key::UP, Key::UP, Key::ENTER}), 0);
    EXPECT_EQ(after(open(5, 3), {Key::DOWN, Key::DOWN, Key::DOWN, Key::ENTER}), 4);
    EXPECT_EQ(after(open(60, 2), {Key::PAGE_DOWN, Key::ENTER}), 28) << "a column on";
    EXPECT_EQ(after(open(60, 59), {Key::PAGE_UP, Key::ENTER}), 33);
}

TEST_F(MenuTest, NothingIsChosenByEscapeNorByWhatCannotBe) {
    EXPECT_EQ(after(open(5, 2), {Key::ESCAPE}), NOTHING);
    EXPECT_TRUE(menu->is_done());
    EXPECT_EQ(after(open(5), {Key::ENTER}), NOTHING);
    EXPECT_FALSE(menu->is_done());
    EXPECT_EQ(after(open(5, 2, 2), {Key::ENTER}), NOTHING);
    EXPECT_FALSE(menu->is_done());
    open(5).press(left_press({99, 300}));
    EXPECT_TRUE(menu->is_done()) << "a click elsewhere closes it";
    EXPECT_EQ(chosen, NOTHING);
    EXPECT_FALSE(open(5).takes_text());
    type_text(*menu, "item 3");
    EXPECT_EQ(after(*menu, {Key::ENTER}), NOTHING);
}

// Rows of 24 units begin 7 below the anchor; the pointer marks what Enter would take.
TEST_F(MenuTest, ThePointerChoosesTheRowUnderIt) {
    for (const int row : {0, 1, 4}) {
        for (const double within : {0.5, 23.5}) {
            const Point at{120, 127 + 24 * row + within};
            open(5).press(left_press(at));
            EXPECT_EQ(chosen, row);
            open(5).move(left_press(at));
            EXPECT_EQ(after(*menu, {Key::ENTER}), row);
        }
    }
    open(5).press(left_press({120, 124}));
    EXPECT_EQ(chosen, NOTHING);
    EXPECT_FALSE(menu->is_done()) << "its margin is part of it";
    open(30).press(left_press({105 + 16 + 12 + 6.6 * 8 + 3, 9 + 24.5}));
    EXPECT_EQ(chosen, 27) << "the second column";
    open(5, NOTHING, NOTHING, true).press(left_press({120, 127 + 30 + 25}));
    EXPECT_EQ(chosen, 1) << "below the search";
}

TEST_F(MenuTest, TheSearchFindsAnywhereInAnyCaseAndEnterTakesTheFirst) {
    Menu& found = open(128, 5, NOTHING, true);
    EXPECT_TRUE(found.takes_text());
    type_text(found, "M 12");
    EXPECT_EQ(after(found, {Key::DOWN, Key::ENTER}), 120) << "12, 120, 121, ...";
    Menu& none = open(128, 5, NOTHING, true);
    type_text(none, "M 123");
    EXPECT_EQ(after(none, {Key::BACKSPACE, Key::BACKSPACE, Key::ENTER}), 1);
    Menu& empty = open(128, 5, NOTHING, true);
    type_text(empty, "z");
    EXPECT_EQ(after(empty, {Key::DOWN, Key::UP, Key::ENTER}), NOTHING);
    EXPECT_EQ(after(empty, {Key::BACKSPACE, Key::ENTER}), NOTHING) << "all, none of them marked";
}

// A row is found by looking for it all over the window.
TEST_F(MenuTest, EveryRowIsWithinTheWindowWhereverItIsOpened) {
    for (const int count : {3, 128}) {
        for (const Rect& anchor : {Rect{2, 2, 40, 20},
                                   {WINDOW_WIDTH - 30, 2, 28, 20},
                                   {2, WINDOW_HEIGHT - 22, 40, 20},
                                   {WINDOW_WIDTH - 30, WINDOW_HEIGHT - 22, 28, 20}}) {
            std::vector<bool> seen(size_t(count), false);
            Menu& opened = open(count, NOTHING, NOTHING, false, anchor);
            for (double y = 4; y < WINDOW_HEIGHT - 4; y += 9) {
                for (double x = 4; x < WINDOW_WIDTH - 4; x += 30) {
                    chosen = NOTHING;
                    opened.press(left_press({x, y}));
                    if (chosen != NOTHING)
                        seen[size_t(chosen)] = true;
                }
            }
            EXPECT_EQ(std::count(seen.begin(), seen.end(), true), count);
        }
    }
}

} // namespace

} // namespace tarquil
