// What the view tells screen readers, and what they do with it.

#include <set>

#include "softsynth/parameters/controller_table.h"
#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

// The first part of that name, as deep as it lies; null for none.
const Spoken* find_part(const Spoken& spoken, const std::string& name) {
    if (spoken.name == name)
        return &spoken;
    for (const Spoken& item : spoken.items) {
        if (const Spoken* const found = find_part(item, name))
            return found;
    }
    return nullptr;
}

const Spoken* focused_part(const Spoken& spoken) {
    if (spoken.is_focused)
        return &spoken;
    for (const Spoken& item : spoken.items) {
        if (const Spoken* const found = focused_part(item))
            return found;
    }
    return nullptr;
}

class SpokenViewTest : public EditorViewTest {
  protected:
    // Of the window as it is now.
    const Spoken& part(const std::string& name) {
        told = view.spoken();
        const Spoken* const found = find_part(told, name);
        if (found == nullptr)
            ADD_FAILURE() << "there is no \"" << name << "\"";
        return found != nullptr ? *found : told;
    }
    const Spoken& focused() {
        told = view.spoken();
        const Spoken* const found = focused_part(told);
        return found != nullptr ? *found : told;
    }
    void act(const std::function<void()>& action) {
        const std::function<void()> kept = action;
        view.act(kept);
    }

    Spoken told;
};

TEST_F(SpokenViewTest, EveryControlThatTabReachesHasANameAndAnAction) {
    for (unsigned page = 0; page < view.get_pages().size(); page++) {
        view.show_page(page);
        const Spoken window = view.spoken();
        std::vector<const Spoken*> open = {&window};
        std::set<std::string> sliders;
        while (!open.empty()) {
            const Spoken& next = *open.back();
            open.pop_back();
            for (const Spoken& item : next.items)
                open.push_back(&item);
            if (!next.focus)
                continue;
            const std::string where = view.get_pages()[page].title + ": " + next.name;
            EXPECT_FALSE(next.name.empty()) << where;
            EXPECT_TRUE(next.press || next.set || !next.is_enabled || next.role == SpokenRole::LIST)
                << where;
            EXPECT_NE(next.role, SpokenRole::NONE) << where;
            if (next.role == SpokenRole::SLIDER) {
                EXPECT_TRUE(sliders.insert(next.name).second) << "twice: " << where;
            }
        }
    }
}

TEST_F(SpokenViewTest, AValueIsReadInItsUnitAndSetAsOneStep) {
    find(CTRL_MAIN_VOLUME);
    const Spoken volume = part("Main volume");
    EXPECT_EQ(volume.role, SpokenRole::SLIDER);
    EXPECT_TRUE(volume.text.ends_with(" dB")) << volume.text;
    const int before = value(CTRL_MAIN_VOLUME);
    act([&] { volume.set(40.0); });
    EXPECT_EQ(value(CTRL_MAIN_VOLUME), 40);
    EXPECT_EQ(part("Main volume").range->now, 40.0);
    act([&] { volume.set(1e9); });
    EXPECT_EQ(value(CTRL_MAIN_VOLUME), 127);
    model.undo();
    model.undo();
    EXPECT_EQ(value(CTRL_MAIN_VOLUME), before);
}

TEST_F(SpokenViewTest, WhatHasNoEffectSaysWhy) {
    find(CTRL_FILTER1_CUTOFF);
    model.choose_value(CTRL_FILTER1_TYPE, 0);
    const Spoken cutoff = part(find_controller(CTRL_FILTER1_CUTOFF)->name);
    EXPECT_FALSE(cutoff.is_enabled);
    EXPECT_NE(cutoff.help.find("No effect now: "), std::string::npos) << cutoff.help;
    model.choose_value(CTRL_FILTER1_TYPE, 1);
    EXPECT_TRUE(part(cutoff.name).is_enabled);
}

TEST_F(SpokenViewTest, AMenuTakesTheFocusAndChooses) {
    find(CTRL_FILTER1_TYPE);
    const std::string name = find_controller(CTRL_FILTER1_TYPE)->name;
    act(part(name).focus);
    EXPECT_EQ(focused().name, name);
    act(part(name).press);
    EXPECT_EQ(focused().role, SpokenRole::MENU_ITEM);
    press_key(Key::DOWN);
    const std::string second = focused().name;
    act(focused().press);
    EXPECT_EQ(focused().name, name);
    EXPECT_EQ(focused().text, second);
}

TEST_F(SpokenViewTest, ANameIsTyped) {
    act([type = part("Program name").type] { type("Orgel"); });
    EXPECT_EQ(model.program_name(), "Orgel");
    EXPECT_EQ(part("Program name").text, "Orgel");
}

TEST_F(SpokenViewTest, AnActionWaitsForTheUsersHand) {
    press(find(CTRL_MAIN_VOLUME));
    bool is_done = false;
    act([&] { is_done = true; });
    EXPECT_FALSE(is_done);
}

} // namespace

} // namespace tarquil
