// Tests of the keyboard along the bottom, by what the pointer and the computer's keys do.

#include "editor/view/keyboard.h"

#include <gmock/gmock.h>

#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

using testing::StartsWith;

class KeyboardTest : public EditorViewTest {
  protected:
    KeyboardTest() { click(KEYS); } // the computer's play
    void move(Point point) { view.move(at(point)); }
    void release(Point point) { view.release(at(point)); }
    // On key `key` (white), so far down from its back, 0..1.
    [[nodiscard]] static Point on(int key, double depth) {
        const Rect area = KeyLayout(PIANO_AREA).area_of(key);
        return {area.center().x, area.y + depth * area.h};
    }
    void tick() { view.tick(1.0); }

    static constexpr Point KEYS{50, 696};
    static constexpr Point SUSTAIN{50, 726};
    static constexpr Point OCTAVE_UP{72, 756};
    static constexpr Point BEND{113, 717};
    static constexpr Point MODULATION{153, 717};
    static constexpr Point HIDE{980, 665};
};

TEST_F(KeyboardTest, KeysAreStruckAsHardAsLowAndAGlissandoGoesFromKeyToKey) {
    press(on(60, 0.0));
    EXPECT_EQ(synth.take(), "1:60+1");
    move(on(60, 0.9));
    EXPECT_EQ(synth.take(), "") << "the same key";
    move(on(62, 0.5));
    move(on(61, 0.99));
    EXPECT_EQ(synth.take(), "1:60- 1:62+64 1:62- 1:61+126");
    move({on(61, 0).x, 400});
    EXPECT_EQ(synth.take(), "1:61-") << "off the keys";
    move(on(64, 0.999));
    release(on(64, 0.999));
    EXPECT_EQ(synth.take(), "1:64+127 1:64-");
    move(on(65, 0.5));
    EXPECT_EQ(synth.take(), "");
}

TEST_F(KeyboardTest, WhatIsHeldEndsWhereItBeganWhateverHappens) {
    view.get_model().select_program(3);
    press(on(60, 0.5));
    view.press_computer_key(38, 'a');
    EXPECT_EQ(synth.take(), "4:60+64 4:60- 4:60+100");
    view.get_model().select_program(5);
    view.show_page(2);
    release(on(60, 0.5));
    EXPECT_EQ(synth.take(), "") << "the computer's key still holds it";
    view.release_computer_key(38);
    EXPECT_EQ(synth.take(), "4:60-");
}

TEST_F(KeyboardTest, TextFieldsPanicAndTheSwitchLeaveNoNoteAndNoDeadKey) {
    const Point name{300, 23};
    view.press_computer_key(38, 'a');
    EXPECT_EQ(synth.take(), "1:60+100");
    click(name);
    ASSERT_TRUE(view.wants_keys());
    view.press_computer_key(39, 's');
    EXPECT_EQ(synth.take(), "") << "it is typed";
    view.release_computer_key(38);
    view.release_computer_key(39);
    EXPECT_EQ(synth.take(), "1:60-");
    press_key(Key::ESCAPE);
    view.press_computer_key(38, 'a');
    EXPECT_EQ(synth.take(), "1:60+100");
    model.get_synth().panic();
    view.release_computer_key(38);
    view.press_computer_key(38, 'a');
    EXPECT_EQ(synth.take(), "1:60- 1:60+100") << "plays at the first press";
    click(KEYS);
    EXPECT_EQ(synth.take(), "1:60-") << "switched off";
    view.press_computer_key(39, 's');
    EXPECT_EQ(synth.take(), "");
}

TEST_F(KeyboardTest, AWindowThatClosesLetsEverythingGo) {
    synth.set_dialect(MidiDialect::GENERAL_MIDI);
    model.refresh();
    {
        EditorView closing{model, settings, true, nullptr, true};
        closing.press(at(SUSTAIN));
        closing.release(at(SUSTAIN));
        closing.press_computer_key(38, 'a');
        closing.press(at(BEND));
        closing.move(at({BEND.x, BEND.y - 100}));
        EXPECT_EQ(synth.take(), "1:down 1:60+100 1:bend 16383");
    }
    const std::string played = synth.take();
    for (const char* end : {"1:60-", "1:bend 8192", "1:up"})
        EXPECT_THAT(played, testing::HasSubstr(end));
}

TEST_F(KeyboardTest, TheBendSpringsBackOnTheChannelThatItBent) {
    press(BEND);
    move({BEND.x, BEND.y - 15});
    EXPECT_THAT(synth.take(), StartsWith("1:bend 1"));
    model.select_program(7);
    move({BEND.x, BEND.y + 100});
    release(BEND);
    EXPECT_EQ(synth.take(), "1:bend 0 1:bend 8192");
    view.wheel(at(BEND), 1.0);
    EXPECT_EQ(synth.take(), "");
}

TEST_F(KeyboardTest, ModulationAndSustainAreGeneralMidis) {
    press(MODULATION);
    move({MODULATION.x, MODULATION.y - 100});
    release(MODULATION);
    click(SUSTAIN);
    view.wheel(at(MODULATION), 3.0);
    EXPECT_EQ(synth.take(), "");
    EXPECT_EQ(synth.keys.channels[0].modulation, 0U);
    synth.set_dialect(MidiDialect::GENERAL_MIDI);
    view.host_changed();
    tick();
    press(MODULATION);
    move({MODULATION.x, MODULATION.y - 100});
    release(MODULATION);
    EXPECT_EQ(synth.keys.channels[0].modulation, 127U) << "stays";
    tick();
    view.wheel(at(MODULATION), -2.0);
    EXPECT_EQ(synth.keys.channels[0].modulation, 111U);
    click(SUSTAIN);
    tick();
    click(SUSTAIN);
    EXPECT_EQ(synth.take(), "1:down 1:up");
}

TEST_F(KeyboardTest, OctavesScrollAsFarAsThereAreKeys) {
    const auto key_at_left = [this] {
        synth.take();
        click({PIANO_AREA.x + 2, PIANO_AREA.bottom() - 2});
        return synth.take();
    };
    const auto key_at_right = [this] {
        click({PIANO_AREA.right() - 2, PIANO_AREA.bottom() - 2});
        return synth.take();
    };
    EXPECT_THAT(key_at_left(), StartsWith("1:24+"));
    EXPECT_THAT(key_at_right(), StartsWith("1:108+"));
    for (int i = 0; i < 5; i++)
        click(OCTAVE_UP);
    EXPECT_THAT(key_at_left(), StartsWith("1:43+"));
    EXPECT_THAT(key_at_right(), StartsWith("1:127+"));
    view.wheel(at(on(60, 0.5)), -1.0);
    EXPECT_THAT(key_at_left(), StartsWith("1:36+"));
    for (int i = 0; i < 5; i++)
        view.wheel(at(on(60, 0.5)), -1.0);
    EXPECT_THAT(key_at_left(), StartsWith("1:0+"));
}

TEST_F(KeyboardTest, HiddenItTakesNoRoomAndPlaysNothing) {
    EXPECT_EQ(view.height(), int(FULL_HEIGHT));
    click(HIDE);
    EXPECT_EQ(view.height(), int(WINDOW_HEIGHT));
    click(on(60, 0.5));
    EXPECT_EQ(synth.take(), "");
    view.press_computer_key(38, 'a');
    EXPECT_EQ(synth.take(), "1:60+100") << "where the keyboard is ours";
    view.release_computer_key(38);
    click(HIDE);
    EXPECT_TRUE(settings.shows_keyboard);

    EditorView in_host(model, settings, false);
    in_host.press_computer_key(38, 'a');
    EXPECT_EQ(synth.take(), "1:60-") << "nothing unless it is asked for";
    in_host.press(at(KEYS));
    in_host.press_computer_key(38, 'a');
    EXPECT_EQ(synth.take(), "1:60+100");
    in_host.press(at(HIDE));
    EXPECT_EQ(synth.take(), "1:60-");
    EXPECT_FALSE(in_host.plays_computer_keys());
}

// Of the pictures' pixels on a key: 0xRRGGBB.
unsigned color_at(const Picture& picture, Point point) {
    cairo_surface_t* surface = cairo_get_target(picture.context());
    cairo_surface_flush(surface);
    const unsigned char* row = cairo_image_surface_get_data(surface) +
                               int(point.y) * cairo_image_surface_get_stride(surface);
    return reinterpret_cast<const uint32_t*>(row)[int(point.x)] & 0xFFFFFFU;
}

TEST_F(KeyboardTest, KeysLightForWhatSoundsHereAndElsewhere) {
    const auto color_of = [&](int key) {
        tick();
        view.draw_changes(picture.context());
        return color_at(picture, on(key, 0.8));
    };
    draw();
    const unsigned dark = color_of(64);
    synth.keys.channels[0].keys.set(60).set(61);
    synth.keys.channels[9].keys.set(62);
    const unsigned accent = palette_of(ThemeKind::DARK)[size_t(theme::ACCENT)];
    EXPECT_EQ(color_of(60), accent);
    EXPECT_EQ(color_of(61), accent);
    const unsigned elsewhere = color_of(62);
    EXPECT_NE(elsewhere, dark);
    EXPECT_NE(elsewhere, accent);
    EXPECT_EQ(color_of(64), dark);
    synth.keys = {};
    EXPECT_EQ(color_of(60), dark);
}

} // namespace

} // namespace tarquil
