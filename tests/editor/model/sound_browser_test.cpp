// Tests of the browser of sounds: what is found, what is kept, and what a load does.

#include "editor/model/sound_browser.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "common/load_string.h"
#include "editor/model/bank_synth.h"
#include "instrument/names.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Instrument sound(const char* name, const char* category, const char* tags, const char* author) {
    Instrument instrument;
    instrument.set_name(name);
    instrument.set_text(InstrumentText::CATEGORY, category);
    instrument.set_text(InstrumentText::TAGS, tags);
    instrument.set_text(InstrumentText::AUTHOR, author);
    return instrument;
}

class ShippingSynth : public BankSynth {
  public:
    ShippingSynth() {
        shipped.get_instrument(4) = sound("Bright_Brass", "brass", "bright loud", "Ann");
        shipped.get_instrument(9) = sound("Dark_Pad", "pads", "slow brass-like", "Bob");
    }
    std::vector<ShippedBank> shipped_banks() override { return {{"Shipped", &shipped}}; }

  private:
    TarqSettings shipped;
};

// Beside the shipped sounds, one of this bank and one file.
class SoundBrowserTest : public testing::Test {
  protected:
    SoundBrowserTest() {
        synth.bank.get_instrument(7) = sound("My_Lead", "leads", "", "Ann");
        model.refresh();
        std::filesystem::create_directories(directory.path("sounds/below"));
        save_file_to_string(directory.path("sounds/below/one.tqi"),
                            sound("Filed_Bass", "basses", "round", "Cy").save_changes_to_string());
        save_file_to_string(directory.path("sounds/broken.tqi"), "no instrument");
        browser.follow(model);
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (size_t i = 0; i < browser.num_rows(); i++)
            found.push_back(browser.row(i).name);
        return found;
    }
    std::vector<std::string> search(const std::string& text) {
        browser.set_search(text);
        return names();
    }
    std::vector<std::string> only(SoundBrowser::Filter filter) {
        browser.set_filter(filter);
        return names();
    }

    TempDirectory directory;
    ShippingSynth synth;
    EditorModel model{synth};
    SoundBrowser browser{directory.path("sounds"), directory.path("config/favourites"),
                         directory.path("config/recent")};
};

TEST_F(SoundBrowserTest, FindsByEveryWordInNameCategoryTagsOrAuthor) {
    EXPECT_THAT(names(), ElementsAre("My Lead", "Bright Brass", "Dark Pad", "Filed Bass"));
    EXPECT_THAT(search("BRASS"), ElementsAre("Bright Brass", "Dark Pad"));
    EXPECT_THAT(search("brass loud"), ElementsAre("Bright Brass"));
    EXPECT_THAT(search("ann"), ElementsAre("My Lead", "Bright Brass"));
    EXPECT_THAT(search("  round  "), ElementsAre("Filed Bass"));
    EXPECT_THAT(search("brass nowhere"), IsEmpty());
    EXPECT_EQ(browser.marked(), std::nullopt);
    EXPECT_EQ(browser.load(0, model), "");
    search("");
    EXPECT_THAT(only(SoundBrowser::Filter::BANK), ElementsAre("My Lead"));
    EXPECT_THAT(only(SoundBrowser::Filter::SHIPPED), ElementsAre("Bright Brass", "Dark Pad"));
    EXPECT_THAT(only(SoundBrowser::Filter::FILES), ElementsAre("Filed Bass"));
}

TEST_F(SoundBrowserTest, ALoadIsOneStepOfUndoAndThisBanksSoundsAreEdited) {
    const std::string before = model.program_name();
    browser.load(2, model);
    EXPECT_EQ(model.program_name(), "Dark_Pad");
    browser.follow(model);
    EXPECT_THAT(names(),
                ElementsAre("Dark Pad", "My Lead", "Bright Brass", "Dark Pad", "Filed Bass"));
    model.undo();
    EXPECT_EQ(model.program_name(), before);
    EXPECT_EQ(model.undo_name(), "");
    browser.follow(model);
    browser.load(0, model);
    EXPECT_EQ(model.get_state().program, 7U);
    EXPECT_EQ(synth.channel_programs[0], 7) << "what is edited is heard";
}

TEST_F(SoundBrowserTest, FavouritesComeBackInTheNextSession) {
    EXPECT_EQ(browser.toggle_favourite(1), "");
    EXPECT_EQ(browser.toggle_favourite(2), "");
    EXPECT_EQ(browser.toggle_favourite(3), "");
    EXPECT_EQ(browser.toggle_favourite(2), "") << "no longer";
    EXPECT_NE(browser.toggle_favourite(0), "") << "this bank's are not the same tomorrow";
    SoundBrowser next(directory.path("sounds"), directory.path("config/favourites"), "");
    next.follow(model);
    next.set_filter(SoundBrowser::Filter::FAVOURITES);
    ASSERT_EQ(next.num_rows(), 2U);
    EXPECT_EQ(next.row(0).name, "Bright Brass");
    EXPECT_EQ(next.row(1).name, "Filed Bass");
    next.toggle_favourite(0);
    EXPECT_EQ(next.num_rows(), 1U);
}

TEST_F(SoundBrowserTest, TheLastSoundsComeFirstInAnotherWindowAndTheNextSession) {
    SoundBrowser other(directory.path("sounds"), "", directory.path("config/recent"));
    other.follow(model);
    browser.load(1, model); // the brass
    other.load(3, model);   // the bass
    browser.follow(model);
    EXPECT_EQ(browser.give_to_channel(3, 2, model), ""); // the pad
    browser.load(0, model);                              // this bank's: no sound of tomorrow
    EXPECT_THAT(only(SoundBrowser::Filter::RECENT),
                ElementsAre("Dark Pad", "Filed Bass", "Bright Brass"));
    browser.load(1, model);
    browser.follow(model);
    EXPECT_THAT(names(), ElementsAre("Filed Bass", "Dark Pad", "Bright Brass"));
    EXPECT_EQ(browser.marked(), 0U);
    RecentSounds kept(directory.path("config/recent"));
    EXPECT_EQ(kept.get_ids().size(), 3U);
    for (int i = 0; i < 30; i++)
        kept.note("sound " + std::to_string(i));
    EXPECT_EQ(RecentSounds(directory.path("config/recent")).get_ids().size(), 20U);
    EXPECT_EQ(kept.get_ids().front(), "sound 29");
}

TEST_F(SoundBrowserTest, AnAuditionLeavesTheEditedProgramAloneAndEndsWithALoad) {
    const EditorState before = model.get_state();
    browser.mark(1);
    browser.audition(synth);
    EXPECT_EQ(synth.auditioned, "Bright_Brass 53");
    browser.mark(2);
    browser.audition(synth);
    EXPECT_EQ(synth.auditioned, "Dark_Pad 57");
    browser.mark(0); // as it is now, not as it was when it was listed
    synth.bank.get_instrument(7).set_text(InstrumentText::COMMENT,
                                          "Phrase: at 90 bpm, quarters: D4");
    browser.audition(synth);
    EXPECT_EQ(synth.auditioned, "My_Lead 62");
    model.refresh();
    EXPECT_EQ(model.get_state(), before);
    EXPECT_EQ(model.undo_name(), "");
    browser.load(1, model);
    EXPECT_EQ(synth.auditioned, "");
}

TEST_F(SoundBrowserTest, AChannelGetsASoundByItself) {
    EXPECT_EQ(browser.give_to_channel(1, 2, model), "");
    EXPECT_EQ(model.channel(), 2U);
    EXPECT_EQ(model.program_name(), "Bright_Brass");
    EXPECT_EQ(synth.channel_programs[2], 2) << "its own program, which no other channel plays";
    model.undo();
    EXPECT_EQ(model.undo_name(), "") << "one step";
    EXPECT_EQ(synth.bank.get_instrument(2).get_name(), default_instrument_name(2));
    synth.channel_programs.fill(0);
    synth.bank.get_instrument(1).set_name("Taken");
    model.refresh();
    EXPECT_EQ(browser.give_to_channel(1, 2, model), "");
    EXPECT_EQ(synth.channel_programs[2], 2) << "the first that nobody has filled";
    EXPECT_EQ(synth.channel_programs[0], 0);
    EXPECT_EQ(browser.give_to_channel(1, 3, model), "");
    EXPECT_EQ(synth.channel_programs[3], 2) << "the bank has it already";
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        synth.bank.get_instrument(i).set_name("Full");
    model.refresh();
    EXPECT_EQ(browser.give_to_channel(2, 4, model), "");
    EXPECT_EQ(synth.channel_programs[4], 127) << "the last that no channel plays";
    model.set_dialect(MidiDialect::GENERAL_MIDI);
    EXPECT_NE(browser.give_to_channel(2, 9, model), "") << "drums are no program";
}

TEST_F(SoundBrowserTest, AProgramIsKeptBesideWhatHasItsName) {
    model.rename_program(0, "Mine");
    for (const char* file : {"sounds/Mine.tqi", "sounds/Mine_2.tqi"}) {
        std::string path;
        EXPECT_EQ(browser.keep_program(model, path), "");
        EXPECT_EQ(path, directory.path(file));
    }
    EXPECT_THAT(only(SoundBrowser::Filter::FILES), ElementsAre("Mine", "Mine", "Filed Bass"));
    SoundBrowser nowhere("/dev/null/sounds", "", "");
    std::string path;
    EXPECT_NE(nowhere.keep_program(model, path), "");
}

TEST_F(SoundBrowserTest, TheMarkStaysWithinTheRows) {
    browser.step(-1);
    EXPECT_EQ(browser.marked(), 0U);
    browser.step(100);
    EXPECT_EQ(browser.marked(), 3U);
    browser.set_search("brass");
    EXPECT_EQ(browser.marked(), 0U);
}

} // namespace

} // namespace tarquil
