// Numbers that stay with the window's parts, and what a screen reader is told has changed.

#include "editor/access/accessible_tree.h"

#include <gtest/gtest.h>

#include "editor/access/accessible_object.h"

namespace tarquil {

namespace {

using Kind = AccessibleChange::Kind;
using Changes = std::vector<AccessibleChange>;

Spoken part(SpokenRole role, const std::string& name, const void* identity = nullptr) {
    Spoken spoken{role, name};
    spoken.identity = identity;
    return spoken;
}

// A window with a knob and a field, told once.
class AccessibleTreeTest : public testing::Test {
  protected:
    AccessibleTreeTest() {
        window = part(SpokenRole::WINDOW, "Tarquil");
        window.items = {part(SpokenRole::SLIDER, "Cutoff", &knob_identity),
                        part(SpokenRole::FIELD, "Name", &field_identity)};
        window.items[0].range = SpokenRange{64.0, 0.0, 127.0, 1.0};
        window.items[1].text = "Orgel";
        window.area = {0, 0, 100, 100};
        window.items[0].area = {10, 10, 20, 20};
        EXPECT_EQ(tree.update(window), Changes());
        knob_number = tree.find(tree.window())->children[0];
        field_number = tree.find(tree.window())->children[1];
    }
    Spoken& knob() { return window.items[0]; }
    Spoken& field() { return window.items[1]; }

    const int knob_identity = 0;
    const int field_identity = 0;
    Spoken window;
    AccessibleTree tree;
    unsigned knob_number = 0;
    unsigned field_number = 0;
};

TEST_F(AccessibleTreeTest, TellsWhatHasChangedOnce) {
    knob().range->now = 65.0;
    knob().is_enabled = false;
    knob().help = "No effect now: the filter is off";
    EXPECT_EQ(tree.update(window), (Changes{{knob_number, Kind::HELP, 0, 0, 0, knob().help},
                                            {knob_number, Kind::ENABLED, 0},
                                            {knob_number, Kind::VALUE}}));
    EXPECT_EQ(tree.update(window), Changes());
}

TEST_F(AccessibleTreeTest, PartsKeepTheirNumbersAndNumbersAreNotGivenTwice) {
    const unsigned window_number = tree.window();
    const Spoken removed = window.items[0];
    window.items.erase(window.items.begin());
    EXPECT_EQ(tree.update(window),
              (Changes{{window_number, Kind::CHILD_REMOVED, 0, 0, knob_number}}));
    EXPECT_EQ(tree.find(knob_number), nullptr);
    EXPECT_EQ(tree.find(window_number)->children, std::vector<unsigned>{field_number});
    window.items.insert(window.items.begin(), removed);
    tree.update(window);
    EXPECT_EQ(tree.find(window_number)->children[1], field_number);
    EXPECT_GT(tree.find(window_number)->children[0], field_number);
}

TEST_F(AccessibleTreeTest, FocusGoesBeforeItComesAndAMenuGivesItBack) {
    knob().is_focused = true;
    EXPECT_EQ(tree.update(window), (Changes{{knob_number, Kind::FOCUSED, 1}}));
    knob().is_focused = false;
    field().is_focused = true;
    EXPECT_EQ(tree.update(window),
              (Changes{{knob_number, Kind::FOCUSED, 0}, {field_number, Kind::FOCUSED, 1}}));
    field().is_focused = false;
    Spoken menu = part(SpokenRole::MENU, "Menu");
    menu.items = {part(SpokenRole::MENU_ITEM, "Saw")};
    menu.items[0].is_focused = true;
    window.items.push_back(menu);
    Changes told = tree.update(window);
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(tree.find(told.back().number)->spoken->name, "Saw");
    window.items.pop_back();
    field().is_focused = true;
    told = tree.update(window);
    EXPECT_EQ(told.back(), (AccessibleChange{field_number, Kind::FOCUSED, 1}));
}

// In characters, of which "ä" is one of two bytes; a common first byte is no common character.
TEST_F(AccessibleTreeTest, TypingTellsWhatGoesAndComes) {
    field().text = "Orgäl";
    field().caret = 4;
    EXPECT_EQ(tree.update(window), (Changes{{field_number, Kind::TEXT_REMOVED, 3, 1, 0, "e"},
                                            {field_number, Kind::TEXT_INSERTED, 3, 1, 0, "ä"},
                                            {field_number, Kind::CARET, 4}}));
    field().text = "Orgöl";
    EXPECT_EQ(tree.update(window), (Changes{{field_number, Kind::TEXT_REMOVED, 3, 1, 0, "ä"},
                                            {field_number, Kind::TEXT_INSERTED, 3, 1, 0, "ö"}}));
    field().text = "Orgööl";
    EXPECT_EQ(tree.update(window), (Changes{{field_number, Kind::TEXT_INSERTED, 4, 1, 0, "ö"}}));
}

TEST_F(AccessibleTreeTest, EachMessageIsShownAnew) {
    for (const char* const text : {"Saved", "Not saved"}) {
        window.items.resize(2);
        window.items.push_back(part(SpokenRole::MESSAGE, text, this));
        const Changes told = tree.update(window);
        EXPECT_EQ(told.back().kind, Kind::SHOWN);
        EXPECT_EQ(tree.find(told.back().number)->spoken->name, text);
    }
}

TEST_F(AccessibleTreeTest, FindsWhatIsUnderAPoint) {
    EXPECT_EQ(tree.at({15, 15}), knob_number);
    EXPECT_EQ(tree.at({50, 50}), tree.window());
    Spoken menu = part(SpokenRole::MENU, "Menu"); // a list of items, over the knob
    menu.items = {part(SpokenRole::MENU_ITEM, "Saw")};
    menu.items[0].area = {0, 0, 60, 20};
    window.items.push_back(menu);
    tree.update(window);
    EXPECT_EQ(tree.find(tree.at({15, 15}))->spoken->name, "Saw");
}

TEST(AccessibleStates, AreThoseOfTheRole) {
    constexpr uint64_t MODAL = 1U << 16U;
    constexpr uint64_t PRESSED = 1U << 20U;
    constexpr uint64_t SELECTED = 1U << 23U;
    for (const auto& [role, its_own] :
         {std::pair(SpokenRole::DIALOG, MODAL), std::pair(SpokenRole::SWITCH, PRESSED),
          std::pair(SpokenRole::TAB, SELECTED), std::pair(SpokenRole::BUTTON, uint64_t(0))}) {
        Spoken spoken = part(role, "");
        spoken.is_on = true;
        EXPECT_EQ(accessible_states(spoken, true) & (MODAL | PRESSED | SELECTED), its_own);
    }
}

TEST(AccessibleObject, TakesItsOwnPathsOnly) {
    for (const unsigned number : {0U, 1U, 4000000000U})
        EXPECT_EQ(AccessibleObject::number_of(AccessibleObject::path_of(number)), number);
    for (const char* const path :
         {"/", "", "/org/a11y/atspi/accessible/", "/org/a11y/atspi/accessible/0",
          "/org/a11y/atspi/accessible/-1", "/org/a11y/atspi/accessible/1a", "/org/a11y/atspi/null",
          "/org/a11y/atspi/accessible/99999999999"})
        EXPECT_FALSE(AccessibleObject::number_of(path)) << path;
}

} // namespace

} // namespace tarquil
