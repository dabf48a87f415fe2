// Tests of the page of sounds: trying them, dragging rows, dropping files.

#include "common/load_string.h"
#include "editor/widgets/sound_list.h"
#include "tests/editor/view/view_fixture.h"
#include "tests/support/bank_text.h"

namespace tarquil {

namespace {

class SoundsPageTest : public EditorViewTest {
  protected:
    // Of this bank, since there are no others.
    SoundsPageTest() {
        for (const unsigned i : {20U, 21U, 22U})
            synth.bank.get_instrument(i).set_name("Sound " + std::to_string(i));
        view.host_changed();
        view.tick(0.1);
        list = find_kind<SoundList>();
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
    save_file_to_string(directory.path("bank.tqb"), text_of(bank));
    view.drop_files({directory.path("bank.tqb")}, {500, 400});
    EXPECT_EQ(model.get_state().song_title, "") << "it is asked first";
    EXPECT_FALSE(view.drag_file(channel_3())) << "not while a question is open";
    press_key(Key::RIGHT);
    press_key(Key::ENTER);
    EXPECT_EQ(model.get_state().song_title, "Dropped");
}

} // namespace

} // namespace tarquil
