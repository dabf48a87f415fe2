// Tests of banks: text, files, embedded instruments and events.

#include "instrument/settings.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "common/load_string.h"
#include "tests/support/bank_text.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

std::unique_ptr<TarqSettings> varied() {
    auto bank = std::make_unique<TarqSettings>();
    int value = 0;
    for (const ControllerInfo& info : global_controller_rows())
        bank->set_global_controller(info.number, (value += 37) % 128);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        bank->get_instrument(i).set_name("number " + std::to_string(i));
        for (const ControllerInfo& info : channel_controller_rows())
            bank->get_instrument(i).set_controller(info.number, (value += 37) % 128);
    }
    bank->set_song_title("A title");
    bank->set_song_author("An author = someone");
    return bank;
}

TEST(Settings, ABankSurvivesItsFile) {
    const TempDirectory directory;
    const auto saved = varied();
    ASSERT_EQ(saved->text_save(directory.path("x.tqb")), 0);
    TarqSettings loaded;
    LoadReport report;
    ASSERT_EQ(loaded.text_load(directory.path("x.tqb"), &report), 0);
    EXPECT_EQ(report.summary(), "");
    EXPECT_EQ(text_of(loaded), text_of(*saved));
    EXPECT_EQ(loaded.get_song_title(), "A title");
    EXPECT_EQ(loaded.get_song_author(), "An author = someone");
    EXPECT_EQ(loaded.get_instrument(127).get_name(), "number_127");
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        EXPECT_EQ(loaded.get_global_controller(number), saved->get_global_controller(number));
        for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
            ASSERT_EQ(loaded.get_instrument(i).get_controller(number),
                      saved->get_instrument(i).get_controller(number));
    }
}

TEST(Settings, AMissingInstrumentIsReadFromTheDefaultFile) {
    const InTempDirectory here;
    TarqSettings bank;
    EXPECT_EQ(bank.text_load_from_string("song_title = x"), 1);
    EXPECT_EQ(bank.get_song_title(), "");
    ASSERT_EQ(save_file_to_string("default.tqi", "name = spare\nmain_volume = 1"), 0);
    EXPECT_EQ(bank.text_load_from_string("song_title = x"), 0);
    EXPECT_EQ(bank.get_song_title(), "x");
    EXPECT_EQ(bank.get_instrument(127).get_name(), "spare");
    EXPECT_EQ(bank.get_instrument(127).get_filename(), "default.tqi");
    EXPECT_EQ(bank.get_instrument(127).get_controller(CTRL_MAIN_VOLUME), 127);
}

TEST(Settings, WarningsNameTheirInstrument) {
    std::string text = text_of(TarqSettings());
    text.replace(0, text.find('\n') + 1, "");
    const std::string key = "instrument9 = hex:";
    text.insert(text.find(key) + key.size(), str2hex("main_volume = 9\n"));
    LoadReport report;
    EXPECT_EQ(TarqSettings().text_load_from_string(text, &report), 0);
    EXPECT_EQ(report.warnings,
              (std::vector<std::string>{"global_filter1_type not found, using defaults",
                                        "instrument9: Controller 7 value 9.000000 out of range, "
                                        "clamping to lowest"}));
}

// A line that is written only when it differs from what a new bank has.
struct SwitchLine {
    const char* key;
    const char* on;
    const char* off;
    void (*set)(TarqSettings& bank, bool is_on);
    bool (*get)(const TarqSettings& bank);
};

const SwitchLine SWITCH_LINES[] = {
    {"midi", "gm", "native",
     [](TarqSettings& bank, bool is_on) {
         bank.set_midi_dialect(is_on ? MidiDialect::GENERAL_MIDI : MidiDialect::NATIVE);
     },
     [](const TarqSettings& bank) { return bank.get_midi_dialect() == MidiDialect::GENERAL_MIDI; }},
    {"tempo_sync", "on", "off", [](TarqSettings& bank, bool is_on) { bank.set_tempo_sync(is_on); },
     [](const TarqSettings& bank) { return bank.get_tempo_sync(); }},
};

TEST(Settings, TheDialectAndFollowingTheTempoAreSavedWhenTheyDifferFromANewBanks) {
    for (const SwitchLine& line : SWITCH_LINES) {
        const std::string key = std::string(line.key) + " = ";
        TarqSettings bank;
        const std::string plain = text_of(bank);
        EXPECT_FALSE(line.get(bank));
        line.set(bank, true);
        EXPECT_EQ(text_of(bank), plain + key + line.on + "\n");
        TarqSettings loaded;
        for (const std::string& text : {text_of(bank) + "\n", save_state_compact(bank)}) {
            line.set(loaded, false);
            EXPECT_EQ(loaded.text_load_from_string(text), 0);
            EXPECT_TRUE(line.get(loaded)) << key;
        }
        for (const std::string& text : {plain, plain + key + line.off + " \n"}) {
            LoadReport report;
            EXPECT_EQ(loaded.text_load_from_string(text, &report), 0);
            EXPECT_FALSE(line.get(loaded));
            EXPECT_EQ(text_of(loaded).find(key), std::string::npos);
            EXPECT_EQ(report.summary(), "");
        }
        // One that a later version knows is kept for it until the user chooses.
        LoadReport report;
        EXPECT_EQ(loaded.text_load_from_string(plain + key + "later\n", &report), 0);
        EXPECT_EQ(report.summary(), key + "later is not known, " + line.off + " is used");
        EXPECT_FALSE(line.get(loaded));
        EXPECT_TRUE(text_of(loaded).ends_with("\n" + key + "later\n"));
        line.set(loaded, false);
        EXPECT_EQ(text_of(loaded).find(key), std::string::npos);
    }
}

TEST(Settings, UnknownLinesAreKeptButThoseOfAState) {
    TarqSettings bank;
    bank.get_instrument(7).set_text(InstrumentText::TAGS, "t");
    const std::string text = text_of(bank) + "later = 1\nmidi = gm\n2nd = x\n";
    TarqSettings loaded;
    EXPECT_EQ(loaded.text_load_from_string(text + "channel_programs = 1 2\n"), 0);
    std::string expected = text_of(loaded);
    EXPECT_EQ(expected.substr(expected.find("later")), "later = 1\nmidi = gm\n2nd = x\n");
    EXPECT_EQ(loaded.get_instrument(7).get_text(InstrumentText::TAGS), "t");
    TarqSettings other;
    EXPECT_EQ(other.load_globals_from_string(text), 0);
    EXPECT_EQ(other.globals_to_string(), loaded.globals_to_string());
    EXPECT_EQ(other.get_midi_dialect(), MidiDialect::GENERAL_MIDI);
}

TEST(Settings, ABrokenLineChangesNothing) {
    const auto bank = varied();
    EXPECT_EQ(bank->text_load_from_string("song_title = other\nbroken"), 6);
    EXPECT_EQ(text_of(*bank), text_of(*varied()));
    EXPECT_EQ(bank->text_load("/missing"), 1);
    EXPECT_EQ(text_of(*bank), text_of(*varied()));
}

} // namespace

} // namespace tarquil
