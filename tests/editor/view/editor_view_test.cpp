// Tests of the editor as a whole: its pages, and what the pointer and the keys do.

#include "editor/view/editor_view.h"

#include <algorithm>
#include <set>

#include "editor/view/section_menu.h"
#include "editor/widgets/pair_slider.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/parameters/influence.h"
#include "tests/editor/view/view_fixture.h"

namespace tarquil {

namespace {

TEST_F(EditorViewTest, EveryControllerIsOnAPageApartFromOthersAndLargeEnoughToHit) {
    constexpr double LEAST = 24.0;
    std::set<unsigned> shown;
    const Rect window{0, 0, WINDOW_WIDTH, WINDOW_HEIGHT};
    for (const Page& page : view.get_pages()) {
        for (const auto& widget : page.widgets) {
            const Rect area = widget->get_area();
            EXPECT_TRUE(window.contains({area.x, area.y}) &&
                        window.contains({area.right(), area.bottom()}))
                << page.title;
            EXPECT_TRUE(!widget->takes_focus() || (area.w >= LEAST && area.h >= LEAST))
                << page.title << " " << area.x << "," << area.y << " " << area.w << "x" << area.h;
            const std::vector<unsigned> set = widget->controllers();
            if (set.size() == 1 || dynamic_cast<PairSlider*>(widget.get()) != nullptr)
                shown.insert(set.begin(), set.end());
            for (const auto& other : page.widgets) {
                const Rect& b = other->get_area();
                const bool is_apart = area.right() <= b.x + 0.5 || b.right() <= area.x + 0.5 ||
                                      area.bottom() <= b.y + 0.5 || b.bottom() <= area.y + 0.5;
                const bool is_text = widget->controllers().empty() || other->controllers().empty();
                EXPECT_TRUE(widget == other || is_text || is_apart)
                    << page.title << " " << area.x << "," << area.y << " " << b.x << "," << b.y;
            }
        }
    }
    for (const ControllerInfo& info : controller_rows())
        EXPECT_TRUE(shown.contains(info.number)) << info.key;
}

TEST_F(EditorViewTest, ChanceLeavesLockedSectionsAlone) {
    find(CTRL_ENV1_ATTACK);
    ViewState& state = view.get_view_state();
    const std::vector<Page>& pages = view.get_pages();
    const auto has = [&](unsigned number) {
        const std::vector<unsigned> open = unlocked_controllers(pages, state);
        return std::find(open.begin(), open.end(), number) != open.end();
    };
    EXPECT_TRUE(has(CTRL_ENV1_ATTACK));
    EXPECT_TRUE(has(CTRL_FILTER1_CUTOFF));
    EXPECT_FALSE(has(CTRL_FCMPR_PRE_GAIN)) << "no part of a sound";
    press({30, 130}, 3); // the first envelope's panel: its menu
    for (int i = 0; i < 6; i++)
        press_key(Key::DOWN);
    press_key(Key::ENTER);
    EXPECT_FALSE(has(CTRL_ENV1_ATTACK));
    EXPECT_TRUE(has(CTRL_ENV2_ATTACK));
    EXPECT_TRUE(has(CTRL_FILTER1_CUTOFF));
}

TEST_F(EditorViewTest, ATypeBringsItsStartingValuesInOneStep) {
    const Point box = find(CTRL_FILTER1_TYPE);
    const ControllerBytes before = model.get_state().bytes;
    click(box);
    for (const Key key : {Key::DOWN, Key::ENTER})
        press_key(key);
    EXPECT_EQ(value(CTRL_FILTER1_TYPE), 1);
    EXPECT_GT(value(CTRL_FILTER1_CUTOFF), before[CTRL_FILTER1_CUTOFF] + 40);
    EXPECT_EQ(value(CTRL_FILTER1_DEPTH), 1);
    model.undo();
    EXPECT_EQ(model.get_state().bytes, before);
    EXPECT_EQ(model.undo_name(), "");
    view.wheel(at(box), 1.0);
    view.wheel(at(box), 1.0);
    model.undo();
    EXPECT_EQ(model.get_state().bytes, before);
}

TEST_F(EditorViewTest, AnyButtonAndAnyNameLeaveItUsable) {
    synth.bank.get_instrument(0).set_name("bad \xFF\xC3 name");
    synth.bank.set_song_title(std::string(100000, 'x'));
    view.host_changed();
    view.tick(0.0);
    const Point knob = find(CTRL_PORTAMENTO_TIME);
    press(knob, 2);
    view.move(at({knob.x, knob.y - 50}));
    EXPECT_EQ(value(CTRL_PORTAMENTO_TIME), 0);
    press(knob);
    view.key({Key::CHARACTER, "z", false, true});
    view.move(at({knob.x, knob.y - 50}));
    EXPECT_GT(value(CTRL_PORTAMENTO_TIME), 0);
    for (unsigned page = 0; page < view.get_pages().size(); page++) {
        view.show_page(page);
        draw();
    }
    EXPECT_EQ(cairo_status(picture.context()), CAIRO_STATUS_SUCCESS);
}

// Of a note of its own on each page.
NoteView moving_note(float part, unsigned page) {
    NoteView note;
    note.is_sounding = 1;
    note.start_time = page;
    note.note = 40 + page;
    for (EnvelopePosition& position : note.envelopes)
        position = {EnvelopeStage::RELEASE, part / 10, 1.0F - part / 2};
    note.lfo_phases[0] = note.lfo_phases[1] = part - std::floor(part);
    note.cutoff = note.lowest_cutoff = note.highest_cutoff = 5.0F + part;
    note.resonance = 1.0F + part;
    return note;
}

// Pointers: over nothing, over the meter itself, over a channel whose tooltip hides others.
TEST_F(EditorViewTest, MovingMetersAreDrawnIntoTheLastPictureAsIntoANewOne) {
    float level = 0.01F;
    for (const unsigned slot : {3U, 4U}) // LFO 1 moves resonance and cutoff
        synth.set_controller(modulation_rows(slot).source, INFL_LFO1);
    synth.set_controller(modulation_rows(3).amount, 90);
    synth.set_controller(modulation_rows(4).amount, 90);
    synth.set_controller(CTRL_FILTER1_TYPE, FILTER_LADDER_START_MARKER);
    view.host_changed();
    for (unsigned page = 0; page < view.get_pages().size(); page++) {
        for (const Point pointer : {Point{2, 2}, Point{800, 20}, Point{200, 60}}) {
            view.show_page(page);
            view.move(at(pointer));
            view.tick(1.0);
            view.wait_for_responses();
            draw();
            level *= 1.1F;
            synth.meters.peaks = {level, 2 * level};
            synth.meters.voices++;
            synth.meters.active_channels ^= 0x55AA;
            synth.keys.channels[0].keys.flip(60);
            synth.keys.channels[0].bend += 100;
            synth.keys.channels[5].keys.flip(61);
            synth.meters.band_levels = {level, level, level, level};
            synth.meters.band_gains = {0.5F, level, 0.1F, 1.0F};
            synth.meters.note = moving_note(level, page);
            synth.output.assign(OutputScope::NUM_FRAMES, level / 10);
            ASSERT_TRUE(view.tick(1.0));
            const Picture anew{int(WINDOW_WIDTH), int(FULL_HEIGHT)};
            view.draw_changes(picture.context());
            view.draw(anew.context());
            // A letter's last shade may lie beyond its widget's edge.
            EXPECT_EQ(picture.compare(anew, 1), "") << view.get_pages()[page].title;
        }
    }
}

// What is kept from drawing to drawing shows nothing of before.
TEST_F(EditorViewTest, APageLooksAsInANewWindowWhateverWasDrawnBefore) {
    const auto draw_page = [](EditorView& shown, unsigned page, double scale, Picture& into) {
        shown.show_page(page);
        shown.tick(1.0);
        cairo_save(into.context());
        cairo_scale(into.context(), scale, scale);
        shown.draw(into.context());
        shown.wait_for_responses();
        shown.draw(into.context());
        cairo_restore(into.context());
    };
    const auto num_pages = unsigned(view.get_pages().size());
    for (const double scale : {1.0, 1.25, 0.75}) {
        for (unsigned page = 0; page < num_pages; page++) {
            for (unsigned number = 0; number < NUM_CONTROLLERS; number += 3) {
                if (find_controller(number) != nullptr)
                    model.set_value(number, int(number * 7 + page) % 128);
            }
            draw_page(view, page, scale, picture);
        }
    }
    for (unsigned page = 0; page < num_pages; page++) {
        for (const double scale : {1.0, 1.25}) {
            Picture warm{1300, 970};
            Picture cold{1300, 970};
            draw_page(view, page, scale, warm);
            EditorView fresh{model, settings, true};
            draw_page(fresh, page, scale, cold);
            EXPECT_EQ(warm.compare(cold, 0), "") << view.get_pages()[page].title << " at " << scale;
        }
    }
}

TEST_F(EditorViewTest, ChannelsArrowsAndTheListChooseWhatIsHeard) {
    const Point third{12 + 2.5 * (WINDOW_WIDTH - 20) / NUM_CHANNELS, 60};
    click(third);
    EXPECT_EQ(synth.program, 2U);
    click({110, 22}); // the arrow back
    EXPECT_EQ(synth.program, 1U);
    EXPECT_EQ(synth.channel_programs[2], 1);
    click({150, 22}); // the list
    type("_77");
    EXPECT_EQ(synth.program, 77U);
    EXPECT_EQ(synth.channel_programs[2], 77);
    click(third);
    type("_5");
    EXPECT_EQ(synth.channel_programs[2], 5) << "selected already: its list opens";
    click({12 + 3.5 * (WINDOW_WIDTH - 20) / NUM_CHANNELS, 60});
    EXPECT_EQ(synth.program, 3U);
    EXPECT_FALSE(view.wants_keys());
    draw();
}

TEST_F(EditorViewTest, APanelIsPutBackFromItsTitle) {
    const ControllerBytes before = model.get_state().bytes;
    const Point fine = find(CTRL_OSC2_FINE_TUNE);
    const auto on_panel = [&](const Panel& panel) { return panel.area.contains(fine); };
    const Page& page = view.get_pages()[0];
    const auto panel = std::find_if(page.panels.begin(), page.panels.end(), on_panel);
    ASSERT_NE(panel, page.panels.end());
    model.set_value(CTRL_OSC2_FINE_TUNE, 3);
    model.set_value(CTRL_OSC1_FINE_TUNE, 3);
    for (const int button : {1, 3}) {
        now += 1000;
        press({panel->area.right() - 15, panel->area.y + 12}, button);
        draw();
        for (const Key key : {Key::DOWN, Key::ENTER})
            press_key(key);
        EXPECT_EQ(value(CTRL_OSC2_FINE_TUNE), before[CTRL_OSC2_FINE_TUNE]);
        EXPECT_EQ(value(CTRL_OSC1_FINE_TUNE), 3);
        model.undo();
    }
}

TEST_F(EditorViewTest, AWarningStaysAndAThemeChangesEverything) {
    draw();
    const Picture light{int(WINDOW_WIDTH), int(FULL_HEIGHT)};
    view.set_theme(ThemeKind::LIGHT);
    EXPECT_EQ(settings.theme, "light");
    view.draw(light.context());
    EXPECT_NE(picture.compare(light, 100), "");
    synth.notice = {EditorNotice::Kind::WARNING, "Nothing is in tune"};
    EXPECT_TRUE(view.tick(1.0));
    const Picture warned{int(WINDOW_WIDTH), int(FULL_HEIGHT)};
    view.draw(warned.context());
    EXPECT_NE(warned.compare(light, 20), "");
    EXPECT_FALSE(view.tick(1.0)) << "nothing new";
}

TEST_F(EditorViewTest, TheScaleIsChosenInTheHeader) {
    click({WINDOW_WIDTH - 40, 20});
    draw();
    press_key(Key::END);
    for (const Key key : {Key::DOWN, Key::ENTER})
        press_key(key);
    EXPECT_EQ(view.scale(), 1.25);
}

} // namespace

} // namespace tarquil
