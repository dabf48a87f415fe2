// Tests of states that hold only what differs from a new bank.

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "common/load_string.h"
#include "instrument/checked_load.h"
#include "instrument/names.h"
#include "instrument/text_error.h"
#include "tests/support/bank_text.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

std::unique_ptr<TarqSettings> new_bank() {
    auto bank = std::make_unique<TarqSettings>();
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        bank->get_instrument(i) = built_in_instrument(i);
    return bank;
}

// A bank whose choices are within their lists, with `part` of its bytes changed.
std::unique_ptr<TarqSettings> random_bank(unsigned seed, double part) {
    std::mt19937 random(seed);
    std::bernoulli_distribution is_changed(part);
    auto bank = new_bank();
    const auto any = [&](unsigned number) {
        return filter_controller(number, int(random() % 128));
    };
    for (const ControllerInfo& info : global_controller_rows()) {
        if (is_changed(random))
            bank->set_global_controller(info.number, any(info.number));
    }
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        Instrument& instrument = bank->get_instrument(i);
        for (const ControllerInfo& info : channel_controller_rows()) {
            if (is_changed(random))
                instrument.set_controller(info.number, any(info.number));
        }
        if (is_changed(random))
            instrument.set_name(random() % 2 == 0 ? "" : "renamed");
        if (is_changed(random))
            instrument.set_text(InstrumentText::COMMENT, "50 % of what \"is\" said / done; = ü ");
    }
    if (is_changed(random))
        bank->set_song_title("A title");
    return bank;
}

TEST(CompactState, ANewBankIsItsVersion) {
    EXPECT_EQ(save_state_compact(*new_bank()), "state_version = 2\n");
}

TEST(CompactState, ReadsBackAsTheSameBank) {
    const InTempDirectory without_a_default_file;
    for (unsigned seed = 1; seed < 9; seed++) {
        const auto saved = random_bank(seed, seed < 3 ? 0.0005 : double(seed) / 9);
        saved->set_midi_dialect(seed % 2 == 0 ? MidiDialect::GENERAL_MIDI : MidiDialect::NATIVE);
        const std::string state = save_state_compact(*saved);
        EXPECT_LT(state.size(), text_of(*saved).size());
        // Nothing of what was there before is left.
        const auto loaded = random_bank(seed + 100, 0.5);
        LoadReport report;
        ASSERT_EQ(load_bank_checked_from_string(*loaded, state, &report), 0);
        EXPECT_EQ(report.summary(), "");
        EXPECT_EQ(text_of(*loaded), text_of(*saved)) << "seed " << seed;
        EXPECT_EQ(save_state_compact(*loaded), state);
        EXPECT_EQ(loaded->get_instrument(0).get_filename().substr(0, 4),
                  state.find("instrument0 = ") == std::string::npos ? "inst" : "byte");
    }
}

TEST(CompactState, OnlyTheVersionMakesMissingProgramsBuiltInOnes) {
    const InTempDirectory without_a_default_file;
    const auto bank = random_bank(3, 0.5);
    const std::string before = text_of(*bank);
    EXPECT_EQ(load_bank_checked_from_string(*bank, "song_title = x\n"), CANNOT_OPEN);
    for (const char* version : {"3", "0", "-1", "99999999999", "x"})
        EXPECT_EQ(load_bank_checked_from_string(
                      *bank, "song_title = x\nstate_version = " + std::string(version) + "\n"),
                  NEWER_VERSION);
    EXPECT_EQ(text_of(*bank), before);
    // What a later version adds without another number stays, and the version is no such line.
    EXPECT_EQ(load_bank_checked_from_string(*bank, "state_version = 1\nlater = 5\n"), 0);
    EXPECT_EQ(save_state_compact(*bank), "state_version = 2\nlater = 5\n");
    EXPECT_EQ(text_of(*bank).find("state_version"), std::string::npos);
}

// As they were saved before sounds were packed.
TEST(CompactState, OfTheFirstVersionIsRead) {
    const InTempDirectory without_a_default_file;
    const auto saved = random_bank(5, 0.3);
    std::string state = "state_version = 1\n" + saved->globals_to_string();
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        state += "instrument" + std::to_string(i) +
                 " = hex:" + str2hex(saved->get_instrument(i).save_changes_to_string()) + "\n";
    const auto loaded = random_bank(6, 0.5);
    ASSERT_EQ(load_bank_checked_from_string(*loaded, state), 0);
    EXPECT_EQ(text_of(*loaded), text_of(*saved));
}

TEST(CompactState, APackedSoundKeepsWhatIsNotKnownAndIsAFractionOfItsText) {
    Instrument instrument = built_in_instrument(0);
    std::string text = "name = x\nlater = 50 % / half\n";
    for (const ControllerInfo& row : channel_controller_rows())
        text += std::string(row.key) + " = 0.3\n";
    ASSERT_EQ(load_instrument_checked_from_string(instrument, text), 0);
    const std::string packed = instrument.save_changes_packed();
    EXPECT_LT(8 * packed.size(), 2 * instrument.save_changes_to_string().size());
    EXPECT_EQ(packed.find('\n'), std::string::npos);
    Instrument loaded;
    ASSERT_EQ(loaded.text_load(packed), 0);
    EXPECT_EQ(loaded.save_to_string(), instrument.save_to_string());
}

TEST(CompactState, APackedSoundThatIsDamagedIsRefused) {
    const InTempDirectory without_a_default_file;
    const auto bank = random_bank(3, 0.5);
    const std::string before = text_of(*bank);
    // No end of the pairs, half a pair, a byte beyond 127, no controller of a sound, no digits,
    // half an escape, a line without a value.
    for (const char* packed :
         {"0a10", "0a;", "0a10b;", "0a80;", "ff10;", "zz10;", ";%", ";%0", ";%zz", ";name"})
        EXPECT_NE(load_bank_checked_from_string(*bank, "state_version = 2\ninstrument7 = bytes:" +
                                                           std::string(packed) + "\n"),
                  0)
            << packed;
    EXPECT_EQ(text_of(*bank), before);
}

} // namespace

} // namespace tarquil
