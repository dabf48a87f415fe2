// Tests of the way from A to B as the user goes it.

#include "editor/view/morph_strip.h"

#include <gtest/gtest.h>

#include "editor/view/key_layout.h"
#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

class MorphStripTest : public EditorViewTest {
  protected:
    // B is a hundred steps from A, which is heard.
    MorphStripTest() {
        model.compare();
        model.set_value(CTRL_PANNING, 100);
        model.compare();
        model.set_value(CTRL_PANNING, 0);
        click(MORPH);
    }
    void click_part(MorphStrip::Part part) { click(MorphStrip::area_of(part).center()); }
    [[nodiscard]] static Point on_slider(double position) {
        const Rect slot = MorphStrip::area_of(MorphStrip::SLIDER).inset(6, 0);
        return {slot.x + position * slot.w, slot.center().y};
    }
    void wait(double seconds) {
        for (int i = 0; i < 10; i++)
            view.tick(seconds / 10);
    }
    int panning() { return value(CTRL_PANNING); }

    static constexpr Point MORPH{1000, 102};
};

TEST_F(MorphStripTest, TheSliderIsDraggedAcrossAndKept) {
    ASSERT_EQ(model.morph_position(), 0.0);
    press(on_slider(0.0));
    view.move(at(on_slider(0.3)));
    EXPECT_EQ(panning(), 30);
    view.move(at({on_slider(0.7).x, 720})); // over the keyboard
    EXPECT_EQ(panning(), 70);
    view.release(at({on_slider(0.7).x, 720}));
    view.move(at(on_slider(0.1)));
    EXPECT_EQ(panning(), 70) << "it has been let go";
    EXPECT_FALSE(synth.keys.channels[0].keys.any());
    // The keyboard can be played meanwhile.
    const Point key = KeyLayout(PIANO_AREA).area_of(60).center();
    press(key);
    EXPECT_TRUE(synth.keys.channels[0].keys[60]);
    view.release(at(key));
    EXPECT_FALSE(synth.keys.channels[0].keys.any());
    press_key(Key::RIGHT);
    EXPECT_EQ(panning(), 71);
    click_part(MorphStrip::VALUE);
    for (int i = 0; i < 5; i++)
        press_key(Key::BACKSPACE);
    type("140");
    EXPECT_EQ(panning(), 71) << "refused";
    press_key(Key::ESCAPE);
    click_part(MorphStrip::KEEP);
    EXPECT_FALSE(model.morph_position());
    EXPECT_EQ(panning(), 71);
    model.undo();
    EXPECT_EQ(panning(), 0);
}

TEST_F(MorphStripTest, TimeGoesTheWayInSecondsOrNotesAtTheTempo) {
    click_part(MorphStrip::PLAY);
    wait(1.0);
    EXPECT_NEAR(panning(), 25, 1) << "four seconds are the first length";
    click_part(MorphStrip::PLAY);
    wait(1.0);
    EXPECT_NEAR(panning(), 25, 1) << "stopped";
    // A whole note at the tempo that is played.
    synth.meters.tempo = 240.0;
    click_part(MorphStrip::LENGTH);
    for (int i = 0; i < 6; i++) // from "4 s"
        press_key(Key::DOWN);
    press_key(Key::ENTER);
    EXPECT_EQ(view.get_view_state().morph_length.text(), "1/1");
    view.tick(0.1);
    type(" "); // plays, and Enter keeps nothing of it yet
    EXPECT_FALSE(model.morph_position()) << "Enter keeps";
    click(MORPH);
    click_part(MorphStrip::SWING);
    click_part(MorphStrip::PLAY);
    const int start = panning();
    wait(0.5);
    const int middle = (start + 100) / 2;
    EXPECT_NEAR(panning(), middle, 1);
    wait(0.75);
    EXPECT_GT(panning(), middle + 10);
    wait(0.25);
    EXPECT_NEAR(panning(), middle, 1) << "on its way back";
    press_key(Key::ESCAPE);
    EXPECT_EQ(panning(), start);
    wait(1.0);
    EXPECT_EQ(panning(), start);
}

TEST_F(MorphStripTest, AScreenReadersUserGoesTheWay) {
    const auto strip_now = [this] {
        for (const Spoken& item : view.spoken().items) {
            if (item.role == SpokenRole::DIALOG)
                return item;
        }
        return Spoken();
    };
    Spoken strip = strip_now();
    ASSERT_FALSE(strip.items.empty());
    view.act([&] { strip.items[0].set(60.0); });
    EXPECT_EQ(panning(), 60);
    strip = strip_now();
    EXPECT_EQ(strip.items[0].text, "60 %");
    EXPECT_EQ(strip.items.back().name, "Keep");
    view.act(strip.items.back().press);
    EXPECT_FALSE(model.morph_position());
    EXPECT_EQ(panning(), 60);
}

TEST_F(MorphStripTest, AProgramThatIsChangedUnderItEndsIt) {
    synth.program = 5;
    view.host_changed();
    view.tick(0.1);
    draw();
    const Point tab{60, 102};
    click(tab);
    EXPECT_FALSE(model.is_in_gesture()) << "the page has the pointer again";
}

} // namespace

} // namespace tarquil
