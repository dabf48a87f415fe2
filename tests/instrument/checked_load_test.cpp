// Tests of loads that succeed as a whole or change nothing.

#include "instrument/checked_load.h"

#include <gtest/gtest.h>

#include "common/load_string.h"
#include "instrument/load_error.h"
#include "instrument/text_error.h"
#include "tests/support/bank_text.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

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

TEST_F(CheckedLoad, ChoicesAreClamped) {
    TarqSettings bank;
    EXPECT_EQ(load_bank_checked_from_string(
                  bank, bank_of("osc1_type = 77\nfilter1_depth = 100\nchan_max_voices = 0\n"
                                "osc1_influence_source = 9\nmain_volume = 1",
                                "global_filter6_type = 99\n")),
              0);
    EXPECT_EQ(bank.get_global_controller(CTRL_GLOBAL_FILTER6_TYPE), 8);
    for (const unsigned program : {0U, 127U}) {
        const Instrument& instrument = bank.get_instrument(program);
        EXPECT_EQ(instrument.get_controller(CTRL_OSC1_TYPE), 5);
        EXPECT_EQ(instrument.get_controller(CTRL_FILTER1_DEPTH), 4);
        EXPECT_EQ(instrument.get_controller(CTRL_CHAN_MAX_VOICES), 1);
        EXPECT_EQ(instrument.get_controller(CTRL_OSC1_INFLUENCE_SOURCE), 5);
        EXPECT_EQ(instrument.get_controller(CTRL_MAIN_VOLUME), 127);
    }
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

TEST_F(CheckedLoad, WhatIsOfAnotherKindIsRefusedAndSaysWhatItIs) {
    const std::string instrument_text = Instrument().save_to_string();
    const std::string bank_text = text_of(TarqSettings());
    struct Case {
        std::string text;
        const char* as_instrument; // null: it is one
        const char* as_bank;
    };
    const Case cases[] = {
        {instrument_text, nullptr, "is an instrument, not a bank"},
        {"\xEF\xBB\xBF"
         "name = x\n",
         nullptr, "is an instrument, not a bank"},
        {"unknown = 1\r\nchan_max_voices = 8", nullptr, "is an instrument, not a bank"},
        {bank_text, "is a bank, not an instrument", nullptr},
        {"\xEF\xBB\xBF" + bank_text, "is a bank, not an instrument", nullptr},
        {"", "is empty", "is empty"},
        {"# nothing\n\n \r\n", "is empty", "is empty"},
        {"\xEF\xBB\xBF", "is empty", "is empty"},
        {std::string("name\0 = \0", 9), "is not a text", "is not a text"},
        {"  name = x\n\tpanning = 0.3\n", "has indented keys, which are not read",
         "has no key of a bank"},
        {" song_title = x\n instrument0 = hex:\n", "has no key of an instrument",
         "has indented keys, which are not read"},
        {"Dear reader\n", "has no key of an instrument", "has no key of a bank"},
        {"instrument128 = hex:\ninstrument05 = hex:\ninstrument = x\nchannel_programs = 1\n",
         "has no key of an instrument", "has no key of a bank"},
    };
    for (const Case& c : cases) {
        Instrument instrument;
        instrument.set_name("mine");
        instrument.set_controller(CTRL_PANNING, 3);
        const std::string before = instrument.save_to_string();
        EXPECT_EQ(load_instrument_checked_from_string(instrument, c.text),
                  c.as_instrument != nullptr ? WRONG_KIND : 0)
            << c.text;
        if (c.as_instrument != nullptr) {
            EXPECT_EQ(explain_instrument_text(WRONG_KIND, c.text), c.as_instrument);
            EXPECT_EQ(instrument.save_to_string(), before);
        }
        TarqSettings bank;
        EXPECT_EQ(load_bank_checked_from_string(bank, c.text),
                  c.as_bank != nullptr ? WRONG_KIND : 0)
            << c.text;
        if (c.as_bank != nullptr) {
            EXPECT_EQ(explain_bank_text(WRONG_KIND, c.text), c.as_bank);
        }
    }
}

TEST_F(CheckedLoad, ALineThatIsIndentedIsNotReadAndSaidSo) {
    Instrument instrument;
    LoadReport report;
    const std::string text = Instrument().save_to_string() + " panning = 1\n";
    EXPECT_EQ(load_instrument_checked_from_string(instrument, text, &report), 0);
    EXPECT_EQ(report.warnings, std::vector<std::string>{"\" panning\" is indented and not read"});
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
