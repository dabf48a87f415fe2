// Tests of the editor as a whole: its pages, and what the pointer and the keys do.

#include "editor/view/editor_view.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "common/load_string.h"
#include "editor/model/bank_synth.h"
#include "editor/pictures/picture.h"
#include "editor/view/section_menu.h"
#include "editor/widgets/pair_slider.h"
#include "editor/widgets/sound_list.h"
#include "softsynth/parameters/filter_type.h"
#include "softsynth/parameters/influence.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

class EditorViewTest : public testing::Test {
  protected:
    // The widget that sets exactly that controller, and the page with it in front.
    Point find(unsigned number) {
        for (unsigned page = 0; page < view.get_pages().size(); page++) {
            for (const auto& widget : view.get_pages()[page].widgets) {
                if (widget->controllers() == std::vector<unsigned>{number}) {
                    view.show_page(page);
                    return widget->get_area().center();
                }
            }
        }
        ADD_FAILURE() << "no widget for " << number;
        return {};
    }

    PointerEvent at(Point point, int button = 1) const {
        return {point.x, point.y, button, false, false, now};
    }
    void press(Point point, int button = 1) { view.press(at(point, button)); }
    void click(Point point) {
        now += 1000;
        press(point);
        view.release(at(point));
    }
    void press_key(Key key) { view.key({key, "", false, false}); }
    void type(const std::string& text) {
        for (const char c : text)
            view.key({Key::CHARACTER, std::string(1, c), false, false});
        press_key(Key::ENTER);
    }
    int value(unsigned number) { return view.get_model().value(number); }
    void draw() { view.draw(picture.context()); }

    TempDirectory directory;
    BankSynth synth;
    EditorModel model{synth};
    EditorSettings settings;
    EditorView view{model, settings, true};
    uint32_t now = 0; // ms
    Picture picture{int(WINDOW_WIDTH), int(FULL_HEIGHT)};
};

TEST_F(EditorViewTest, EveryControllerIsOnAPageAndNothingOverlaps) {
    std::set<unsigned> shown;
    const Rect window{0, 0, WINDOW_WIDTH, WINDOW_HEIGHT};
    for (const Page& page : view.get_pages()) {
        for (const auto& widget : page.widgets) {
            const Rect area = widget->get_area();
            EXPECT_TRUE(window.contains({area.x, area.y}) &&
                        window.contains({area.right(), area.bottom()}))
                << page.title;
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

TEST_F(EditorViewTest, EveryTargetIsLargeEnoughToHit) {
    constexpr double LEAST = 24.0;
    for (const Page& page : view.get_pages()) {
        for (const auto& widget : page.widgets) {
            const Rect& area = widget->get_area();
            EXPECT_TRUE(!widget->takes_focus() || (area.w >= LEAST && area.h >= LEAST))
                << page.title << " " << area.x << "," << area.y << " " << area.w << "x" << area.h;
        }
    }
}

class SoundsPageTest : public EditorViewTest {
  protected:
    // Of this bank, since there are no others.
    SoundsPageTest() {
        for (const unsigned i : {20U, 21U, 22U})
            synth.bank.get_instrument(i).set_name("Sound " + std::to_string(i));
        view.host_changed();
        view.tick(0.1);
        for (unsigned page = 0; page < view.get_pages().size(); page++) {
            if (view.get_pages()[page].title == "Sounds")
                view.show_page(page);
            for (const auto& widget : view.get_pages()[page].widgets)
                if (const auto* found = dynamic_cast<const SoundList*>(widget.get()))
                    list = found;
        }
        draw();
    }
    [[nodiscard]] Point row(size_t index) const { return list->row_center(index); }
    // The middle of channel 3.
    [[nodiscard]] Point channel_3() {
        for (double x = 0; x < WINDOW_WIDTH; x++)
            if (view.channel_at({x, 60}) == 2U)
                return {x + 20, 60};
        return {};
    }

    const SoundList* list = nullptr;
};

TEST_F(SoundsPageTest, TheMarkedSoundIsTriedUntilItIsNotMarkedOrNotSeen) {
    const EditorState before = model.get_state();
    click(row(0));
    EXPECT_EQ(synth.auditioned, "Sound_20 60");
    press_key(Key::DOWN);
    EXPECT_EQ(synth.auditioned, "Sound_21 60");
    press_key(Key::ESCAPE);
    EXPECT_EQ(synth.auditioned, "");
    press_key(Key::UP);
    EXPECT_EQ(synth.auditioned, "Sound_20 60");
    view.show_page(0);
    EXPECT_EQ(synth.auditioned, "");
    model.refresh();
    EXPECT_EQ(model.get_state(), before);
    EXPECT_EQ(model.undo_name(), "");
}

TEST_F(SoundsPageTest, ARowIsDraggedToAChannel) {
    press(row(2));
    view.move(at({row(2).x + 2, row(2).y}));
    EXPECT_FALSE(view.get_view_state().carried) << "a hand that trembles";
    view.move(at(channel_3()));
    ASSERT_TRUE(view.get_view_state().carried);
    EXPECT_EQ(view.get_view_state().carried->channel, 2U);
    view.release(at(channel_3()));
    EXPECT_FALSE(view.get_view_state().carried);
    EXPECT_EQ(synth.channel_programs[2], 22);
    EXPECT_EQ(model.channel(), 2U);
    model.undo();
    EXPECT_EQ(synth.channel_programs[2], 2);
    now += 1000; // no double click
    press(row(2));
    view.move(at({500, 400}));
    view.release(at({500, 400}));
    EXPECT_EQ(model.undo_name(), "") << "nowhere";
}

TEST_F(SoundsPageTest, AFileIsDroppedOnAChannelOrAskedAbout) {
    Instrument bass;
    bass.set_name("Dropped");
    const std::string path = directory.path("bass.tqi");
    save_file_to_string(path, bass.save_to_string());
    EXPECT_TRUE(view.drag_file(channel_3()));
    view.drop_files({path}, channel_3());
    EXPECT_EQ(model.program_name(), "Dropped");
    EXPECT_EQ(model.channel(), 2U);
    view.drop_files({path, path}, channel_3());
    view.drop_files({directory.path("none.tqi")}, channel_3());
    model.undo();
    EXPECT_EQ(model.undo_name(), "") << "neither two at once nor none";
    TarqSettings bank;
    bank.set_song_title("Dropped");
    std::string text;
    bank.text_save_to_string(text);
    save_file_to_string(directory.path("bank.tqb"), text);
    view.drop_files({directory.path("bank.tqb")}, {500, 400});
    EXPECT_EQ(model.get_state().song_title, "") << "it is asked first";
    EXPECT_FALSE(view.drag_file(channel_3())) << "not while a question is open";
    press_key(Key::RIGHT);
    press_key(Key::ENTER);
    EXPECT_EQ(model.get_state().song_title, "Dropped");
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

TEST_F(EditorViewTest, AnExportAsksBeforeItReplacesAndAnImportThatFailsSaysWhy) {
    const std::string path = directory.path("sound.tqi");
    view.choose_file({"Export", ".tqi", true, path, [&](const std::string& chosen) {
                          return view.get_model().export_instrument(chosen, 0);
                      }});
    press_key(Key::ENTER);
    std::string text;
    ASSERT_EQ(load_file_to_string(path, text), 0);
    ASSERT_EQ(save_file_to_string(path, "broken"), 0);
    for (const bool is_yes : {false, true}) {
        view.choose_file({"Export", ".tqi", true, path, [&](const std::string& chosen) {
                              return view.get_model().export_instrument(chosen, 0);
                          }});
        press_key(Key::ENTER);
        draw();
        press_key(is_yes ? Key::ENTER : Key::ESCAPE);
        std::string written;
        load_file_to_string(path, written);
        EXPECT_EQ(written, is_yes ? text : "broken");
    }
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
            // A curve that is clipped differs by a shade here and there.
            EXPECT_EQ(picture.compare(anew, 1), "") << view.get_pages()[page].title;
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

// A file of which only the name is there.
class FakeDocument : public EditorDocument {
  public:
    [[nodiscard]] const std::string& path() const override { return file; }
    [[nodiscard]] bool is_changed() const override { return changed; }
    std::string save(const std::string& new_path) override {
        if (!problem.empty())
            return problem;
        file = new_path;
        changed = false;
        return "";
    }
    std::string open(const std::string& new_path) override { return save(new_path); }

    std::string file;
    std::string problem;
    bool changed = true;
};

class KeptViewTest : public EditorViewTest {
  protected:
    static KeyEvent control(const char* key, bool shift = false) {
        return {Key::CHARACTER, key, shift, true};
    }
    void press_in(Key key) { kept.key({key, "", false, false}); }
    void type_in(const std::string& text) {
        for (const char c : text)
            kept.key({Key::CHARACTER, std::string(1, c), false, false});
        press_in(Key::ENTER);
    }

    FakeDocument document;
    EditorView kept{model, settings, true, &document};
};

TEST_F(KeptViewTest, SaveAsksForANameOnceAndAFailureKeepsTheQuestionOpen) {
    EXPECT_TRUE(kept.key(control("s")));
    ASSERT_TRUE(kept.wants_keys()) << "it has no name yet";
    document.problem = directory.path("a.tqb") + ": cannot be written: no space left";
    type_in(directory.path("a"));
    EXPECT_TRUE(kept.wants_keys());
    document.problem.clear();
    press_in(Key::ENTER);
    EXPECT_FALSE(kept.wants_keys());
    EXPECT_EQ(document.file, directory.path("a.tqb"));
    document.changed = true;
    kept.key(control("s"));
    EXPECT_FALSE(document.changed);
    EXPECT_FALSE(kept.wants_keys());
    kept.key(control("s", true));
    EXPECT_TRUE(kept.wants_keys());
    draw();
}

TEST_F(KeptViewTest, ClosingAsksOnlyWhenSomethingWouldBeLost) {
    document.file = directory.path("a.tqb");
    document.changed = false;
    EXPECT_TRUE(kept.may_close());
    document.changed = true;
    EXPECT_FALSE(kept.may_close());
    EXPECT_FALSE(kept.may_close()) << "the question is there already";
    press_in(Key::ESCAPE);
    EXPECT_FALSE(kept.is_close_chosen());
    EXPECT_TRUE(document.changed);
    document.problem = "full";
    EXPECT_FALSE(kept.may_close());
    press_in(Key::ENTER);
    EXPECT_FALSE(kept.is_close_chosen()) << "what cannot be saved is not given up";
    document.problem.clear();
    EXPECT_FALSE(kept.may_close());
    press_in(Key::ENTER);
    EXPECT_TRUE(kept.is_close_chosen());
    EXPECT_FALSE(document.changed);
}

TEST_F(KeptViewTest, DiscardedEditsAreGoneAndOpeningAsksFirst) {
    document.file = directory.path("a.tqb");
    kept.key(control("o"));
    EXPECT_FALSE(kept.wants_keys()) << "a question";
    for (const Key key : {Key::RIGHT, Key::ENTER})
        press_in(key);
    ASSERT_TRUE(kept.wants_keys()) << "the file";
    type_in(directory.path("b.tqb"));
    EXPECT_EQ(document.file, directory.path("b.tqb"));
    document.changed = true;
    EXPECT_FALSE(kept.may_close());
    for (const Key key : {Key::RIGHT, Key::ENTER})
        press_in(key);
    EXPECT_TRUE(kept.is_close_chosen());
    EXPECT_TRUE(document.changed);
}

TEST_F(KeptViewTest, ControlPlusMinusAndZeroChangeTheSizeWithinTheScreen) {
    kept.set_scale_range({1.25, 1.6});
    for (const double scale : {1.25, 1.5, 1.6, 1.6}) {
        kept.key(control("+"));
        EXPECT_EQ(kept.scale(), scale);
    }
    EXPECT_TRUE(settings.is_scale_chosen);
    for (const double scale : {1.5, 1.25, 1.0, 0.75, 0.75}) {
        kept.key(control("-"));
        EXPECT_EQ(kept.scale(), scale);
    }
    kept.key(control("0"));
    EXPECT_EQ(kept.scale(), 1.25);
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
