// Tests of the pointer and of keys on the whole editor.

#include <algorithm>

#include "softsynth/parameters/influence.h"
#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

TEST_F(EditorViewTest, DragWheelDoubleClickAndShift) {
    const Point knob = find(CTRL_FILTER1_CUTOFF);
    const int start = value(CTRL_FILTER1_CUTOFF);
    press(knob);
    view.move(at({knob.x, knob.y - 60}));
    const int dragged = value(CTRL_FILTER1_CUTOFF);
    EXPECT_NEAR(dragged, start + 42, 2);
    PointerEvent fine = at({knob.x, knob.y - 120});
    fine.shift = true;
    view.move(fine);
    EXPECT_NEAR(value(CTRL_FILTER1_CUTOFF), dragged + 4, 2);
    view.release(at(knob));
    view.wheel(at(knob), 1.0);
    EXPECT_NEAR(value(CTRL_FILTER1_CUTOFF), dragged + 6, 2);
    click(knob);
    now += 100;
    press(knob);
    EXPECT_EQ(value(CTRL_FILTER1_CUTOFF), start);
    view.get_model().undo();
    view.get_model().undo();
    view.get_model().undo();
    EXPECT_EQ(value(CTRL_FILTER1_CUTOFF), start);
    EXPECT_EQ(view.get_model().undo_name(), "");
}

TEST_F(EditorViewTest, AShortRowOfNotchesOrKeysIsOneStep) {
    const Point knob = find(CTRL_FILTER1_CUTOFF);
    const Point other = find(CTRL_FILTER1_RESONANCE);
    const int start = value(CTRL_FILTER1_CUTOFF);
    const int resonance = value(CTRL_FILTER1_RESONANCE);
    for (int i = 0; i < 3; i++) {
        view.wheel(at(knob), 1.0);
        view.tick(0.4);
    }
    EXPECT_EQ(value(CTRL_FILTER1_CUTOFF), start + 6);
    PointerEvent fine = at(knob);
    fine.shift = true;
    for (int i = 0; i < 5; i++)
        view.wheel(fine, 1.0);
    EXPECT_EQ(value(CTRL_FILTER1_CUTOFF), start + 7) << "ten times finer";
    view.wheel(at(other), 1.0);
    view.tick(0.6);
    view.wheel(at(other), 1.0);
    EXPECT_EQ(model.undo_name(), "Filter resonance");
    model.undo();
    EXPECT_EQ(value(CTRL_FILTER1_RESONANCE), resonance + 2);
    model.undo();
    EXPECT_EQ(value(CTRL_FILTER1_RESONANCE), resonance);
    model.undo();
    EXPECT_EQ(value(CTRL_FILTER1_CUTOFF), start);
    EXPECT_EQ(model.undo_name(), "");
    click(knob); // which has the keys now
    for (int i = 0; i < 4; i++)
        press_key(Key::UP);
    model.undo();
    EXPECT_EQ(value(CTRL_FILTER1_CUTOFF), start);
}

TEST_F(EditorViewTest, HoverEndsWhenThePointerLeaves) {
    const Point knob = find(CTRL_FILTER1_CUTOFF);
    const Picture still{int(WINDOW_WIDTH), int(FULL_HEIGHT)};
    view.tick(0.0);
    view.wait_for_responses();
    view.draw(still.context());
    view.move(at(knob));
    view.tick(1.0);
    draw();
    EXPECT_NE(picture.compare(still, 0), "") << "lit, with a tooltip";
    view.leave();
    EXPECT_TRUE(view.tick(0.0));
    draw();
    EXPECT_EQ(picture.compare(still, 0), "");
}

TEST_F(EditorViewTest, AValueIsTypedAndNonsenseRefused) {
    const Point knob = find(CTRL_OSC1_COARSE_TUNE);
    const Point number{knob.x, knob.y + 30};
    EditorView in_host(model, settings, false);
    EXPECT_FALSE(in_host.key({Key::CHARACTER, "a", false, false})) << "keys belong to the host";
    click(number);
    ASSERT_TRUE(view.wants_keys());
    type("-12");
    EXPECT_EQ(value(CTRL_OSC1_COARSE_TUNE), 52);
    EXPECT_FALSE(view.wants_keys());
    click(number);
    type("twelve");
    EXPECT_TRUE(view.wants_keys()) << "the field stays";
    draw();
    press_key(Key::ESCAPE);
    EXPECT_EQ(value(CTRL_OSC1_COARSE_TUNE), 52);
    EXPECT_FALSE(view.wants_keys());
}

TEST_F(EditorViewTest, CopyAndPasteGoByTheRightButton) {
    view.get_model().set_value(CTRL_OSC1_SPREAD, 99);
    press(find(CTRL_OSC1_SPREAD), 3);
    for (const Key key : {Key::DOWN, Key::DOWN, Key::ENTER})
        press_key(key);
    press(find(CTRL_OSC2_SPREAD), 3);
    draw();
    for (const Key key : {Key::DOWN, Key::DOWN, Key::DOWN, Key::ENTER})
        press_key(key);
    EXPECT_EQ(value(CTRL_OSC2_SPREAD), 99);
}

TEST_F(EditorViewTest, TheKeyboardReachesEveryControl) {
    view.show_page(0);
    bool is_reached = false;
    const int start = value(CTRL_PORTAMENTO_TIME);
    for (int i = 0; i < 100 && !is_reached; i++) {
        press_key(Key::TAB);
        press_key(Key::UP);
        is_reached = value(CTRL_PORTAMENTO_TIME) != start;
    }
    EXPECT_TRUE(is_reached);
    view.key({Key::CHARACTER, "z", false, true});
    EXPECT_EQ(value(CTRL_PORTAMENTO_TIME), start);
}

TEST_F(EditorViewTest, ASourceIsDraggedOntoWhatItIsToMove) {
    constexpr unsigned MODULATION_PAGE = 3;
    view.show_page(MODULATION_PAGE);
    const auto& widgets = view.get_pages()[MODULATION_PAGE].widgets;
    const auto routing = std::find_if(widgets.begin(), widgets.end(), [](const auto& widget) {
        return widget->get_area().w > 900;
    });
    ASSERT_NE(routing, widgets.end());
    const Rect inside = (*routing)->get_area().inset(8);
    const auto source = [&](unsigned influence) {
        return Point{inside.x + 60, inside.y + inside.h * (influence - 0.5) / 9};
    };
    const auto target = [&](unsigned slot) {
        return Point{inside.right() - 60, inside.y + inside.h * (slot + 0.5) / 8};
    };
    const auto drag = [&](unsigned influence, unsigned slot) {
        press(source(influence));
        view.move(at(target(slot)));
        draw();
        view.release(at(target(slot)));
    };
    drag(INFL_LFO1, FIRST_CUTOFF_SLOT);
    const ModulationRows cutoff = modulation_rows(FIRST_CUTOFF_SLOT);
    EXPECT_EQ(value(cutoff.source), int(INFL_LFO1));
    EXPECT_GT(value(cutoff.amount), 64) << "so that it is heard";
    view.get_model().undo();
    EXPECT_EQ(value(cutoff.source), int(INFL_NONE));
    EXPECT_EQ(value(cutoff.amount), 64);
    drag(INFL_OSC3, FIRST_PITCH_SLOT);
    EXPECT_EQ(value(modulation_rows(FIRST_PITCH_SLOT).source), int(INFL_NONE)) << "impossible";
}

} // namespace

} // namespace tarquil
