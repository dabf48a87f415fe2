// Tests of MIDI learn as the user sees it: a control waits, a controller moves, the list changes.

#include <gtest/gtest.h>

#include "editor/widgets/learned_list.h"
#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

class LearningTest : public EditorViewTest {
  protected:
    // The item behind reset, copy, paste and the typed value.
    void start_learning(unsigned number) {
        click(find(number), 3);
        for (int i = 0; i < 5; i++)
            press_key(Key::DOWN);
        press_key(Key::ENTER);
    }
    [[nodiscard]] LearnedControls learned() const { return synth.bank.get_learned(); }
};

TEST_F(LearningTest, AControlWaitsForAControllerAndIsMovedByItAsOneStep) {
    start_learning(CTRL_FILTER1_CUTOFF);
    ASSERT_EQ(model.learning(), unsigned(CTRL_FILTER1_CUTOFF));
    EXPECT_TRUE(synth.is_listening);
    view.tick(0.1);
    EXPECT_TRUE(model.learning()) << "nothing has moved yet";
    synth.heard_controller = 74;
    EXPECT_TRUE(view.tick(0.1));
    EXPECT_FALSE(model.learning());
    EXPECT_FALSE(synth.is_listening);
    EXPECT_EQ(learned().find(CTRL_FILTER1_CUTOFF), 74U);
    EXPECT_EQ(model.undo_name(), "Learn Filter cutoff");
    model.undo();
    EXPECT_EQ(learned(), LearnedControls());
    model.redo();
    EXPECT_EQ(learned().find(CTRL_FILTER1_CUTOFF), 74U);
}

TEST_F(LearningTest, AClickEscapeOrTheWindowsEndGivesUp) {
    const Point nowhere{2, 120};
    for (const int way : {0, 1}) {
        start_learning(CTRL_FILTER1_CUTOFF);
        ASSERT_TRUE(model.learning());
        if (way == 0)
            click(nowhere, 1);
        else
            press_key(Key::ESCAPE);
        EXPECT_FALSE(model.learning());
        EXPECT_FALSE(synth.is_listening) << "controllers play again";
    }
    {
        EditorView closing{model, settings, false};
        model.start_learning(CTRL_PANNING);
    }
    EXPECT_FALSE(synth.is_listening);
    model.start_learning(CTRL_PITCH_BEND_MSB);
    EXPECT_FALSE(model.learning()) << "it has a wheel of its own";
}

class LearnedListTest : public LearningTest {
  protected:
    LearnedListTest() {
        LearnedControls taught;
        for (unsigned i = 0; i < 20; i++)
            taught.learn(102 + i, CTRL_FCMPR_BAND1_THRESHOLD + i);
        taught.learn(20, CTRL_FILTER1_RESONANCE);
        taught.learn(21, CTRL_OSC1_TYPE);
        model.set_learned("Learn", taught);
        view.open_overlay(std::make_unique<LearnedList>(view));
    }
    void click(unsigned row, LearnedList::Cell cell) {
        EditorViewTest::click(LearnedList::cell_area(row, cell).center());
    }
};

TEST_F(LearnedListTest, EndsAreTypedInUnitsTurnedRoundAndTakenAway) {
    click(0, LearnedList::AT_TOP);
    ASSERT_TRUE(view.wants_keys());
    type("much");
    EXPECT_TRUE(view.wants_keys()) << "it is refused";
    press_key(Key::ESCAPE);
    click(0, LearnedList::AT_TOP);
    type("3.0");
    const uint8_t middle = learned().get(20)->last;
    EXPECT_NEAR(middle, 3.0 / 7.5 * 127, 1.0);
    click(0, LearnedList::REVERSE);
    EXPECT_EQ(learned().get(20), (LearnedControl{CTRL_FILTER1_RESONANCE, middle, 0}));
    click(1, LearnedList::AT_BOTTOM);
    type("saw");
    EXPECT_GT(learned().get(21)->first, 0);
    click(0, LearnedList::REMOVE);
    EXPECT_FALSE(learned().get(20));
    EXPECT_TRUE(learned().get(21));
    model.undo();
    EXPECT_TRUE(learned().get(20));
    press_key(Key::ESCAPE);
    EXPECT_EQ(view.key({Key::DOWN, "", false, false}), false) << "it is closed";
}

TEST_F(LearnedListTest, TheLastRowsComeInSightAndCanAllBeRemoved) {
    for (int i = 0; i < 50; i++)
        press_key(Key::DOWN);
    press_key(Key::DEL);
    EXPECT_FALSE(learned().get(119)) << "the last of them";
    for (int i = 0; i < 40; i++) {
        draw();
        press_key(Key::DEL);
    }
    draw();
    EXPECT_EQ(learned(), LearnedControls());
    view.wheel({400, 300, 0, false, false, now}, -3.0);
    press_key(Key::ENTER);
    draw();
}

TEST_F(LearningTest, HeldNotesAreStruckAgainWhereThatIsWanted) {
    model.set_value(CTRL_ENV1_ATTACK, 50);
    view.tick(1.0);
    EXPECT_EQ(synth.strikes, 0);
    settings.strikes_again = true;
    model.set_value(CTRL_FILTER1_CUTOFF, 50);
    view.tick(1.0);
    EXPECT_EQ(synth.strikes, 0) << "that is heard at once";
    for (int i = 0; i < 20; i++) { // a drag
        model.set_value(CTRL_ENV1_ATTACK, 60 + i);
        view.tick(0.016);
    }
    view.tick(1.0);
    EXPECT_GE(synth.strikes, 2);
    EXPECT_LE(synth.strikes, 4) << "no more often than a hand would";
}

TEST_F(LearningTest, WhatFollowsTheTempoIsDrawnAtTheHosts) {
    const auto hertz = [&] { return double(view.get_view_state().times.lfo_hz(0)[64]); };
    view.tick(1.0);
    EXPECT_FALSE(view.get_view_state().times.is_on());
    model.set_tempo_sync(true);
    view.tick(1.0);
    ASSERT_TRUE(view.get_view_state().times.is_on());
    const double at_120 = hertz();
    synth.meters.tempo = 90.0;
    EXPECT_TRUE(view.tick(1.0)) << "there is something to draw";
    EXPECT_NEAR(hertz(), at_120 * 0.75, 1e-5);
    draw();
    EXPECT_FALSE(view.tick(1.0)) << "nothing since";
    model.set_tempo_sync(false);
    view.tick(1.0);
    EXPECT_FALSE(view.get_view_state().times.is_on());
}

} // namespace

} // namespace tarquil
