// Folders of texts become banks, and mistakes in them are found.

#include "sounds/sound_sources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "common/failure.h"
#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {
namespace {

class SoundSourcesTest : public testing::Test {
  protected:
    void save(const std::string& name, const std::string& text) {
        const std::filesystem::path file = directory.path(name);
        std::filesystem::create_directories(file.parent_path());
        ASSERT_EQ(save_file_to_string(file.string(), text), 0);
    }

    // What is said about a file with this text.
    std::string complaint(const std::string& name, const std::string& text) {
        save(name, text);
        std::string what;
        try {
            read_sound_sources(directory.path());
        } catch (const BadInput& error) {
            what = error.what();
        }
        std::filesystem::remove(directory.path(name));
        return what;
    }

    TempDirectory directory;
};

TEST_F(SoundSourcesTest, PutsTextsInTheirPlaces) {
    save("gm/chromatic/012_marimba.tqi", "name = marimba\ncategory = mallets\nosc1_type = 1\n");
    save("gm/globals.txt", "reverb_wet = 0.5\nsong_title = ignored\n");
    save("gm/laws.txt", "p012_env1_decay = key -10\n");
    save("drums/005_kick.tqi", "name = kick\n");
    save("drums/kits.txt", "family = kick\nk00_036 = kick 5 60 100 64 400\n");
    save("originals/bass/deep.tqi", "name = deep\n");
    save("originals/order.txt", "# which is which\n\n007 bass/deep.tqi\n");
    save("originals/laws.txt", "p007_vibrato = 5 20 0.3 0.5\n");
    const SoundSources sources = read_sound_sources(directory.path());
    const Instrument& marimba = sources.gm.get_instrument(12);
    EXPECT_EQ(marimba.get_name(), "marimba");
    EXPECT_EQ(marimba.get_controller(CTRL_OSC1_TYPE), 1);
    EXPECT_EQ(sources.gm.get_instrument(13).get_name(), "instrument_13");
    EXPECT_EQ(sources.gm.get_global_controller(CTRL_REVERB_WET), 64);
    EXPECT_EQ(sources.gm.get_midi_dialect(), MidiDialect::GENERAL_MIDI);
    EXPECT_EQ(sources.originals.get_midi_dialect(), MidiDialect::NATIVE);
    EXPECT_EQ(sources.originals.get_instrument(7).get_name(), "deep");
    EXPECT_EQ(sources.map.programs.laws_of(12).size(), 1U);
    EXPECT_EQ(sources.map.find_drum(0, 36)->instrument, 5);
    EXPECT_EQ(sources.map.drum_bank, "gm-drums.tqb");
    EXPECT_THAT(sources.originals_map_text, testing::HasSubstr("p007_vibrato"));
    EXPECT_THAT(sources.originals_map_text, testing::HasSubstr("k00_036"));
}

TEST_F(SoundSourcesTest, FindsMistakes) {
    save("gm/piano/000_grand.tqi", "name = grand\n");
    save("drums/005_kick.tqi", "name = kick\n");
    save("drums/006_thud.tqi", "name = thud\nfilter1_cutoff = 3\n");
    using testing::HasSubstr;
    EXPECT_THAT(complaint("gm/a.tqi", "name = a\n"), HasSubstr("no number from 000 to 127"));
    EXPECT_THAT(complaint("gm/128_a.tqi", "name = a\n"), HasSubstr("128_a.tqi: no number"));
    EXPECT_THAT(complaint("gm/x/000_a.tqi", "name = a\n"), HasSubstr("its number is there twice"));
    EXPECT_THAT(complaint("gm/001_a.tqi", ""), HasSubstr("001_a.tqi: is empty"));
    EXPECT_THAT(complaint("gm/001_a.tqi", "osc1_type = 1\n"), HasSubstr("the sound has no name"));
    EXPECT_THAT(complaint("gm/001_a.tqi", "name = a\nosc1_typ = 1\n"),
                HasSubstr("\"osc1_typ\" is no key of an instrument"));
    EXPECT_THAT(complaint("gm/001_a.tqi", "name = a\nmain_volume = 3\n"),
                HasSubstr("out of range"));
    EXPECT_THAT(complaint("gm/001_a.tqi", "name = a\nosc1_type = 77\n"),
                HasSubstr("a choice is beyond its list"));
    EXPECT_THAT(complaint("gm/001_a.tqi", "name = a\nbroken\n"), HasSubstr("line 2"));
    EXPECT_THAT(complaint("originals/order.txt", "003\n"), HasSubstr("names no file"));
    EXPECT_THAT(complaint("originals/order.txt", "003 no.tqi\n"), HasSubstr("no.tqi: "));
    EXPECT_THAT(complaint("gm/laws.txt", "p000_osc1_typ = key 1\n"), HasSubstr("line 4"));
    EXPECT_THAT(complaint("originals/laws.txt", "p000_vibrato = 5\n"),
                HasSubstr("originals/laws.txt: the map of laws and kits: line 4"));
    EXPECT_THAT(complaint("drums/kits.txt", "family = a\nk00_036 = a 7 60 100 64 9\n"),
                HasSubstr("kit 0, key 36: there is no drum 7"));
    EXPECT_THAT(complaint("drums/kits.txt", "family = a\nk00_036 = a 5 60 100 64 9\n"
                                            "k00_037 = a 6 60 100 64 9\n"),
                HasSubstr("filter1_cutoff"));
}

} // namespace
} // namespace tarquil
