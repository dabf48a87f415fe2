// Tests of loads that succeed as a whole or change nothing.

#include "instrument/checked_load.h"

#include <gtest/gtest.h>

#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

std::string text_of(const TarqSettings& bank) {
    std::string text;
    bank.text_save_to_string(text);
    return text;
}

// A bank whose instruments all are the text `instrument`.
std::string bank_of(const std::string& instrument, const std::string& globals) {
    std::string text = globals;
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        text += "instrument" + std::to_string(i) + " = hex:" + str2hex(instrument) + "\n";
    return text;
}

class CheckedLoad : public testing::Test {
  protected:
    void SetUp() override { testing::internal::CaptureStdout(); }
    void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStdout(), ""); }
};

TEST_F(CheckedLoad, ChoicesOfAnInstrumentAreClamped) {
    Instrument instrument;
    const std::string text = "osc1_type = 77\nfilter1_depth = 100\nchan_max_voices = 0\n"
                             "osc1_influence_source = 9\nmain_volume = 1";
    EXPECT_EQ(load_instrument_checked_from_string(instrument, text), 0);
    EXPECT_EQ(instrument.get_controller(CTRL_OSC1_TYPE), 5);
    EXPECT_EQ(instrument.get_controller(CTRL_FILTER1_DEPTH), 4);
    EXPECT_EQ(instrument.get_controller(CTRL_CHAN_MAX_VOICES), 1);
    EXPECT_EQ(instrument.get_controller(CTRL_OSC1_INFLUENCE_SOURCE), 5);
    EXPECT_EQ(instrument.get_controller(CTRL_MAIN_VOLUME), 127);
}

TEST_F(CheckedLoad, ChoicesOfABankAreClamped) {
    TarqSettings bank;
    EXPECT_EQ(load_bank_checked_from_string(
                  bank, bank_of("osc1_type = 77", "global_filter6_type = 99\n")),
              0);
    EXPECT_EQ(bank.get_global_controller(CTRL_GLOBAL_FILTER6_TYPE), 8);
    EXPECT_EQ(bank.get_instrument(0).get_controller(CTRL_OSC1_TYPE), 5);
    EXPECT_EQ(bank.get_instrument(127).get_controller(CTRL_OSC1_TYPE), 5);
}

TEST_F(CheckedLoad, AFailedBankLeavesTheUsersBank) {
    TarqSettings bank;
    bank.get_instrument(0).set_name("mine");
    bank.set_global_controller(CTRL_REVERB_WET, 3);
    const std::string before = text_of(bank);
    const std::string text = "reverb_wet = 1\ninstrument0 = hex:" + str2hex("name = theirs\n") +
                             "\ninstrument1 = hex:zz\n";
    EXPECT_EQ(load_bank_checked_from_string(bank, text), 3);
    EXPECT_EQ(text_of(bank), before);
    EXPECT_EQ(load_bank_checked(bank, "/missing"), 1);
    EXPECT_EQ(text_of(bank), before);
}

TEST_F(CheckedLoad, AnInstrumentFileIsTakenByItsOwnName) {
    const TempDirectory directory;
    ASSERT_EQ(save_file_to_string(directory.path("two words.tqi"), "osc1_type = 9"), 0);
    Instrument instrument;
    instrument.set_name("mine");
    EXPECT_EQ(load_instrument_checked(instrument, directory.path("missing.tqi")), 1);
    EXPECT_EQ(instrument.get_filename(), "");
    EXPECT_EQ(load_instrument_checked(instrument, directory.path("two words.tqi")), 0);
    EXPECT_EQ(instrument.get_filename(), directory.path("two_words.tqi"));
    EXPECT_EQ(instrument.get_name(), "mine");
    EXPECT_EQ(instrument.get_controller(CTRL_OSC1_TYPE), 5);
}

} // namespace

} // namespace tarquil
