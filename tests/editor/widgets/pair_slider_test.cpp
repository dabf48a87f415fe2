// Tests of the sliders whose value is two controllers'.

#include "editor/widgets/pair_slider.h"

#include "editor/widgets/multiply_switch.h"
#include "softsynth/parameters/influence.h"
#include "tests/editor/user_input.h"
#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

constexpr ModulationRows ROWS = modulation_rows(FIRST_PITCH_SLOT);

class PairSliderTest : public EditorViewTest {
  protected:
    PairSliderTest() {
        model.set_value(ROWS.source, INFL_LFO1);
        steps_before = model.revision();
        slider = find_setting({ROWS.amount, ROWS.fine_amount});
        area = slider->get_area();
    }
    // Right of the middle of the slot.
    [[nodiscard]] Point place(double way) const {
        return {area.x + (area.w - 82) / 2 + way, area.center().y};
    }
    PointerEvent at(Point point, bool shift = false) {
        return {point.x, point.y, 1, shift, false, now += 1000};
    }
    void drag(double way) {
        view.press(at(place(0)));
        view.move(at(place(way)));
        view.release(at(place(way)));
    }
    [[nodiscard]] PairBytes bytes() const {
        return {model.value(ROWS.amount), model.value(ROWS.fine_amount)};
    }
    void undo_all_of_it() {
        model.undo();
        EXPECT_EQ(bytes(), (PairBytes{64, 64}));
        EXPECT_EQ(model.revision(), steps_before) << "it was one step";
    }

    std::optional<uint64_t> steps_before;
    Rect area;
    Widget* slider = nullptr;
};

TEST_F(PairSliderTest, ADragSetsBothAndIsOneStep) {
    // A quarter of the way to the right end: a sixteenth of the most, 105 cents.
    drag((area.w - 82 - 12) / 8);
    EXPECT_EQ(bytes(), nearest_pair(amount_pair(0), 1.0 / 16));
    undo_all_of_it();
    drag(2.0 * area.w);
    EXPECT_EQ(bytes(), (PairBytes{MULTIPLYING_AMOUNT - 1, 127}));
    undo_all_of_it();
}

TEST_F(PairSliderTest, NotchesWithShiftAreTheFinestSteps) {
    for (int i = 0; i < 3; i++)
        view.wheel(at(place(0), true), 1.0);
    EXPECT_EQ(bytes(), (PairBytes{64, 67}));
    undo_all_of_it();
    view.wheel(at(place(0)), -1.0);
    view.wheel(at(place(0)), -1.0);
    // Two 64ths of the whole way are a 16th of the half: its square.
    EXPECT_EQ(bytes(), nearest_pair(amount_pair(0), -1.0 / 256));
    undo_all_of_it();
}

TEST_F(PairSliderTest, AValueIsTypedWithItsUnit) {
    const Point number{area.right() - 10, area.center().y};
    view.press(at(number));
    ASSERT_TRUE(view.wants_keys());
    type("7 st");
    EXPECT_EQ(bytes(), nearest_pair(amount_pair(0), 0.498307));
    EXPECT_NE(slider->tooltip(view).find("between -11.94 st and +7 st"), std::string::npos)
        << slider->tooltip(view);
    undo_all_of_it();
}

TEST_F(PairSliderTest, MultiplyingIsASwitchThatGivesTheAmountBack) {
    drag(40.0);
    const PairBytes set = bytes();
    auto* const button = find_kind<MultiplySwitch>();
    ASSERT_NE(button, nullptr);
    button->press(view, left_press(button->get_area().center()));
    EXPECT_EQ(bytes().coarse, MULTIPLYING_AMOUNT);
    drag(100.0);
    view.wheel(at(place(0)), 1.0);
    EXPECT_EQ(bytes().coarse, MULTIPLYING_AMOUNT) << "the slider has no meaning now";
    button->press(view, left_press(button->get_area().center()));
    EXPECT_EQ(bytes(), set);
}

} // namespace

} // namespace tarquil
