// The banks within the program are those of the files beside it.

#include "sounds/shipped_sounds.h"

#include <gtest/gtest.h>

#include "instrument/checked_load.h"
#include "instrument/names.h"
#include "midi/gm/gm_map_file.h"
#include "sounds/shipped_data.h"
#include "tests/support/bank_text.h"
#include "tests/support/files.h"

namespace tarquil {
namespace {

TEST(ShippedSounds, AreTheBanksOfTheFiles) {
    const std::pair<std::string, const TarqSettings*> banks[] = {
        {"gm", &shipped_gm_bank()},
        {"gm-drums", &shipped_gm_drums()},
        {"originals", &shipped_originals()}};
    for (const auto& [name, shipped] : banks) {
        const std::string path = std::string(SOUNDS_FOLDER) + "/" + name + ".tqb";
        const std::string file = file_text(path);
        EXPECT_TRUE(text_of(*shipped) == file) << name; // too long to print
        TarqSettings loaded;
        LoadReport report;
        ASSERT_EQ(load_bank_checked(loaded, path, &report), 0);
        EXPECT_EQ(report.summary(), "") << name;
        EXPECT_TRUE(text_of(loaded) == file) << name;
        EXPECT_EQ(find_shipped_bank(name), shipped);
    }
    EXPECT_EQ(find_shipped_bank("GM"), nullptr);
    EXPECT_EQ(shipped_gm_bank().get_midi_dialect(), MidiDialect::GENERAL_MIDI);
}

TEST(ShippedSounds, NoneIsMissing) {
    for (const TarqSettings* bank : {&shipped_gm_bank(), &shipped_originals()})
        for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
            const Instrument& sound = bank->get_instrument(i);
            EXPECT_NE(sound.get_name(), default_instrument_name(i)) << i;
            EXPECT_EQ(sound.get_text(InstrumentText::AUTHOR), "Tarquil") << sound.get_name();
            EXPECT_NE(sound.get_text(InstrumentText::CATEGORY), "") << sound.get_name();
            EXPECT_NE(sound.get_text(InstrumentText::COMMENT), "") << sound.get_name();
        }
}

TEST(ShippedSounds, TheMapsAreThoseOfTheFiles) {
    const std::pair<const char*, std::string_view> maps[] = {{"gm", gm_map_text()},
                                                             {"originals", originals_map_text()}};
    for (const auto& [name, text] : maps) {
        EXPECT_TRUE(text == file_text(std::string(SOUNDS_FOLDER) + "/" + name + ".tqm")) << name;
        GmMap map;
        EXPECT_EQ(load_gm_map_from_string(map, text), "");
        EXPECT_EQ(map.melodic_bank, std::string(name) + ".tqb");
    }
}

} // namespace
} // namespace tarquil
